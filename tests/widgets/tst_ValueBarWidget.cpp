// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "MessageLog.h"
#include "ValueBar.h"

#include "devices/LumenoBarDevice.h"
#include "TestMain.h"
#include "widgets/ValueBarGeometry.h"

#include <QPainter>
#include <QtTest>

#include <limits>

class tst_ValueBarWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlot();
    void withoutADeviceNothingIsDrawn();
    void drawsItsPartsWhereTheyBelong_data();
    void drawsItsPartsWhereTheyBelong();
    void panelIsRoundedAndInsetByFive();
    void startsAtZero_data();
    void startsAtZero();
    void valueBeyondTheScaleMovesThePointerBeyondItsEnds_data();
    void valueBeyondTheScaleMovesThePointerBeyondItsEnds();
    void reversedScaleCountsFromItsMinimum();
    void pointerIsClippedByTheMask();
    void looksAsDrawnWithoutPixmaps_data();
    void looksAsDrawnWithoutPixmaps();
    void valueThatIsNoNumberHasNoPointer_data();
    void valueThatIsNoNumberHasNoPointer();
};

void tst_ValueBarWidget::declaresItsSlot()
{
    QCOMPARE(methodTable(ValueBarWidget::staticMetaObject), QStringList("slot input(double)"));
}

void tst_ValueBarWidget::withoutADeviceNothingIsDrawn()
{
    ValueBarWidget widget(nullptr, nullptr);
    MessageLog log;
    widget.initialise();
    log.take();
    QVERIFY(!widget.isInitialised());
    widget.resize(400, 120);
    widget.input(0.5);
    QCOMPARE(pictureOf(widget, kBehind).pixelColor(200, 60), kBehind);

    LumenoBarDevice derived;
    ValueBarWidget other(&derived, nullptr);
    other.initialise();
    QVERIFY(other.isInitialised());
    QCOMPARE(log.take(), QStringList());
}

/// Places worked out from the size, with a green zone and a value of a quarter.
struct Places
{
    QSize size;
    int scaleTop, scaleBottom;
    int shortTicks[3]; ///< The second, fourth and sixth.
    int longTicks[2];  ///< The first and last.
    int shortEnd;
    int greenLeft, greenRight;
    int pointerX, pointerTop, pointerCentre;
};
Q_DECLARE_METATYPE(Places)

void tst_ValueBarWidget::drawsItsPartsWhereTheyBelong_data()
{
    QTest::addColumn<Places>("at");
    QTest::newRow("210 x 75") << Places{{210, 75}, 34,  68, {19, 47, 76}, {33, 176}, 50,
                                        69,        139, 69, 10,           24};
    QTest::newRow("400 x 120") << Places{
        {400, 120}, 54, 113, {32, 88, 144}, {60, 339}, 82, 130, 268, 130, 14, 38};
    QTest::newRow("800 x 200") << Places{
        {800, 200}, 90, 193, {61, 174, 287}, {117, 682}, 138, 258, 539, 258, 20, 62};
}

void tst_ValueBarWidget::drawsItsPartsWhereTheyBelong()
{
    QFETCH(Places, at);
    Bar bar({{"widget/minThreshold", "0.25"}, {"widget/maxThreshold", "0.75"}}, at.size);
    bar.device.input(0.25);
    const QImage image = bar.picture();
    const int aboveTicks = at.scaleTop + 1;
    const auto colour = [&](int x, int y) { return image.pixelColor(x, y); };

    QCOMPARE(colour(2, at.scaleTop), kBehind);
    QCOMPARE(colour(at.size.width() - 3, at.scaleTop), kBehind);
    QCOMPARE(colour(at.size.width() / 2, 8), kPanel);
    QCOMPARE(colour(at.size.width() / 2, at.scaleTop - 2), kPanel);

    QCOMPARE(colour(at.greenRight, aboveTicks), kGreen);
    QCOMPARE(colour(at.greenRight + 1, aboveTicks), kRed);
    QCOMPARE(colour(at.greenLeft, at.scaleBottom - 1), kGreen);
    QCOMPARE(colour(at.greenLeft - 1, at.scaleBottom - 1), kRed);

    for (const int x : at.shortTicks) {
        QCOMPARE(colour(x, at.shortEnd - 1), kTick);
        QCOMPARE(colour(x - 1, at.shortEnd - 1), kTick);
        QVERIFY(colour(x - 2, at.shortEnd - 1) != kTick);
    }
    QCOMPARE(colour(at.shortTicks[0], at.shortEnd + 2), kRed);
    for (const int x : at.longTicks) {
        QCOMPARE(colour(x, at.shortEnd + 2), kTick);
        QCOMPARE(colour(x - 1, at.shortEnd + 2), kTick);
    }

    QCOMPARE(colour(at.pointerX, at.pointerCentre), QColor(Qt::black));
    QCOMPARE(colour(at.pointerX - 10, at.pointerTop + 4), kPointerEdge);
    QCOMPARE(colour(at.pointerX + 9, at.pointerTop + 4), kPointerEdge);
    QCOMPARE(colour(at.pointerX - 12, at.pointerTop + 4), kPanel);
    QCOMPARE(colour(at.pointerX + 11, at.pointerTop + 4), kPanel);
    QCOMPARE(colour(at.pointerX, at.pointerTop), kPointerEdge);
    QCOMPARE(colour(at.pointerX, at.pointerTop - 2), kPanel);
    const int half = at.pointerCentre - at.pointerTop;
    QVERIFY(colour(at.pointerX, at.pointerCentre + half - 1).value() < 0x40); // The tip.
    QVERIFY(colour(at.pointerX + 10, at.pointerCentre + half - 1).value() > 0x40);
}

void tst_ValueBarWidget::panelIsRoundedAndInsetByFive()
{
    Bar bar;
    const QImage image = bar.picture();
    for (const QPoint& outside :
         {QPoint(5, 5), QPoint(394, 5), QPoint(394, 114), QPoint(5, 114), QPoint(6, 6),
          QPoint(200, 4), QPoint(200, 115), QPoint(4, 60), QPoint(395, 60)}) {
        QCOMPARE(image.pixelColor(outside), kBehind);
    }
    for (const QPoint& inside : {QPoint(200, 5), QPoint(5, 40), QPoint(394, 40), QPoint(9, 9)}) {
        QVERIFY(image.pixelColor(inside) != kBehind);
    }
    QCOMPARE(image.pixelColor(9, 9), kPanel);
}

void tst_ValueBarWidget::startsAtZero_data()
{
    QTest::addColumn<QString>("min");
    QTest::addColumn<int>("pointer");
    QTest::newRow("at the scale's start") << "0" << 60;
    QTest::newRow("on the scale") << "-1" << 200; // Up to 1: half way, 60.7 + 139.3.
}

void tst_ValueBarWidget::startsAtZero()
{
    QFETCH(QString, min);
    QFETCH(int, pointer);
    // Steps in proportion, so that the ticks stay where they are.
    const QString factor = min == "0" ? "1" : "2";
    Bar bar({{"widget/minValue", min},
             {"widget/digitsStep", factor == "1" ? "0.5" : "1"},
             {"widget/dashesStep", factor == "1" ? "0.1" : "0.2"}});
    const QVector<int> columns = pointerColumns(bar);
    QVERIFY(!columns.isEmpty());
    QVERIFY(qAbs(columns[columns.size() / 2] - pointer) <= 1);
}

void tst_ValueBarWidget::valueBeyondTheScaleMovesThePointerBeyondItsEnds_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    // A tenth is 27.857 pixels; the black reaches from 9 left of the place to 8 right of it.
    QTest::newRow("a tenth below the minimum") << -0.1 << 32 - 9 << 32 + 8;
    QTest::newRow("a tenth above the maximum") << 1.1 << 367 - 9 << 367 + 8;
    QTest::newRow("far below") << -100.0 << -1 << -1;
    QTest::newRow("far above") << 1e300 << -1 << -1;
}

void tst_ValueBarWidget::valueBeyondTheScaleMovesThePointerBeyondItsEnds()
{
    QFETCH(double, value);
    QFETCH(int, first);
    QFETCH(int, last);
    Bar bar;
    bar.device.input(value);
    const QVector<int> columns = pointerColumns(bar);
    QCOMPARE(columns.value(0, -1), first);
    QCOMPARE(columns.isEmpty() ? -1 : columns.last(), last);
}

void tst_ValueBarWidget::pointerIsClippedByTheMask()
{
    Bar bar;
    bar.device.input(-0.2); // 60.7 - 55.7: from 5 - 10 to 5 + 10, half of it beside the panel.
    QCOMPARE(bar.pixel(4, 30), kBehind);
    QCOMPARE(bar.pixel(6, 30), QColor(Qt::black));
    QCOMPARE(bar.pixel(12, 30), QColor(Qt::black));
    QCOMPARE(bar.pixel(17, 30), kPanel);
}

void tst_ValueBarWidget::looksAsDrawnWithoutPixmaps_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("value");
    for (const QSize& size : {QSize(400, 120), QSize(61, 60), QSize(300, 31), QSize(200, 24)}) {
        for (const double value : {-0.25, -0.2, -0.15, 0.0, 0.37, 1.0, 1.15, 1.2, 1.3, qQNaN()}) {
            QTest::addRow("%g at %d x %d", value, size.width(), size.height()) << size << value;
        }
    }
}

/// At the rounded corners, too, and where the numbers reach them.
void tst_ValueBarWidget::looksAsDrawnWithoutPixmaps()
{
    QFETCH(QSize, size);
    QFETCH(double, value);
    Bar bar({{"widget/precision", "6"}}, size);
    bar.device.input(value);
    bar.picture(); // Made for the first time, the picture after it shown from pixmaps.
    const QImage shown = bar.picture();
    QImage expected(shown.size(), shown.format());
    expected.fill(kBehind);
    QPainter painter(&expected);
    bar.bar().updateScale(painter); // Leaves its clip.
    if (!qIsNaN(value)) {
        const double step = (size.width() - 10) / 14.0;
        painter.setPen(QPen(kPointerEdge, 2));
        painter.setBrush(Qt::black);
        painter.drawPolygon(
            norvo::valuebar::pointer(size, 0.45, 5 + 2 * step, size.width() - 5 - 2 * step, value));
    }
    painter.end();
    QVERIFY(largestDifference(shown, expected) <= 1);
}

void tst_ValueBarWidget::valueThatIsNoNumberHasNoPointer_data()
{
    QTest::addColumn<double>("value");
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
    QTest::newRow("negative infinity") << -std::numeric_limits<double>::infinity();
}

void tst_ValueBarWidget::valueThatIsNoNumberHasNoPointer()
{
    QFETCH(double, value);
    Bar bar;
    QVERIFY(!pointerColumns(bar).isEmpty());
    bar.device.input(value);
    QVERIFY(pointerColumns(bar).isEmpty());
    QCOMPARE(bar.pixel(200, 20), kPanel);
    bar.device.input(0.25);
    QVERIFY(!pointerColumns(bar).isEmpty());
}

void tst_ValueBarWidget::reversedScaleCountsFromItsMinimum()
{
    Bar bar({{"widget/minValue", "1"}, {"widget/maxValue", "0"}});
    bar.device.input(0.9); // a tenth below the minimum, which stands at the left end
    const QVector<int> columns = pointerColumns(bar);
    QCOMPARE(columns.value(0, -1), 32 - 9);
    bar.device.input(1.5);
    QVERIFY(qAbs(pointerColumns(bar).value(9, -1) - 200) <= 1);
}

NORVO_TEST(tst_ValueBarWidget)
#include "tst_ValueBarWidget.moc"
