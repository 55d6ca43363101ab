#include "Declarations.h"
#include "GaugePicture.h"
#include "MessageLog.h"
#include "Stand.h"

#include "devices/LumenoBarDevice.h"
#include "devices/OutputBarDevice.h"
#include "widgets/ValueBarWidget.h"

#include <QtTest>

#include <limits>

namespace {

const QColor kBehind(Qt::magenta);
const QColor kPanel("#F5F5E6");
const QColor kRed("#FD454D");
const QColor kGreen("#049143");
const QColor kTick("#F0F0F0");
const QColor kPointerEdge("#3C3C3C");

/// A value bar of 400 x 120: the panel from 5 to 394 and 5 to 114, the scale on it from line 54 to
/// 113. 390 / 14 pixels lie between two short ticks, so that the scale runs from 60.7 to 339.3.
class Bar : public Stand<OutputBarDevice>
{
public:
    explicit Bar(const Params& params = {}, const QSize& size = {400, 120}) : Stand(params)
    {
        widget->resize(size);
    }

    ValueBarWidget& bar() { return static_cast<ValueBarWidget&>(*widget); }
    QImage picture(double scale = 1.0) { return pictureOf(*widget, kBehind, scale); }
    QColor pixel(int x, int y) { return picture().pixelColor(x, y); }
};

/// Columns in which the pointer's black shows, a little below its top.
QVector<int> pointerColumns(Bar& bar)
{
    QVector<int> columns;
    const QImage image = bar.picture();
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, 30) == QColor(Qt::black)) {
            columns.append(x);
        }
    }
    return columns;
}

} // namespace

class tst_ValueBarWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlot();
    void incompatibleDeviceIsToldAndNothingIsDrawn();
    void drawsItsPartsWhereTheyBelong_data();
    void drawsItsPartsWhereTheyBelong();
    void panelIsRoundedAndInsetByFive();
    void startsAtZero_data();
    void startsAtZero();
    void valueBeyondTheScaleMovesThePointerBeyondItsEnds_data();
    void valueBeyondTheScaleMovesThePointerBeyondItsEnds();
    void pointerIsClippedByTheMask();
    void equalEndsDrawAllButPointerAndZone();
    void valueThatIsNoNumberHasNoPointer_data();
    void valueThatIsNoNumberHasNoPointer();
    void heightsAreClampedToShares_data();
    void heightsAreClampedToShares();
    void scaleHeightZeroHasNoScale();
    void customHeightTakesItsFirstArgument();
    void thresholdsMoveTheGreenZone();
    void pictureFollowsTheSize();
    void beforeInitialiseNothingIsDrawn();
    void deinitialiseForgetsAllUntilInitialise();
    void initialiseAllowsUpdates();
    void valueDrawsLater();
    void wrongSettingsStillDrawPanelAndPointer_data();
    void wrongSettingsStillDrawPanelAndPointer();
};

void tst_ValueBarWidget::declaresItsSlot()
{
    QCOMPARE(methodTable(ValueBarWidget::staticMetaObject), QStringList("slot input(double)"));
}

void tst_ValueBarWidget::incompatibleDeviceIsToldAndNothingIsDrawn()
{
    ValueBarWidget widget(nullptr, nullptr);
    MessageLog log;
    widget.initialise();
    QCOMPARE(log.take(),
             QStringList("debug: ValueBarWidget: Error! Attached to incompatible device"));
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

void tst_ValueBarWidget::equalEndsDrawAllButPointerAndZone()
{
    Bar bar({{"widget/minValue", "1"}, {"widget/maxValue", "1"}, {"widget/maxThreshold", "1"}});
    for (const double value : {0.0, 1.0, 2.0}) {
        bar.device.input(value);
        QVERIFY(pointerColumns(bar).isEmpty());
        QCOMPARE(bar.pixel(200, 20), kPanel);
        QCOMPARE(bar.pixel(260, 100), kRed);
        // Five short ticks, 390 / 4 apart; the one number stands at the third.
        QCOMPARE(bar.pixel(102, 70), kTick);
        QCOMPARE(bar.pixel(200, 88), kTick);
        QCOMPARE(bar.pixel(102, 88), kRed);
    }
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

void tst_ValueBarWidget::heightsAreClampedToShares_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("counts");
    QTest::newRow("above one") << "1.5"
                               << "1";
    QTest::newRow("infinite") << "inf"
                              << "1";
    QTest::newRow("below zero") << "-0.5"
                                << "0";
    QTest::newRow("no number") << "nan"
                               << "0";
}

void tst_ValueBarWidget::heightsAreClampedToShares()
{
    QFETCH(QString, given);
    QFETCH(QString, counts);
    for (const char* name : {"widget/scaleHeight", "widget/arrowHeight"}) {
        Bar bar({{name, given}});
        Bar clamped({{name, counts}});
        Bar standard;
        QCOMPARE(bar.picture(), clamped.picture());
        QVERIFY(bar.picture() != standard.picture());
    }
}

void tst_ValueBarWidget::scaleHeightZeroHasNoScale()
{
    Bar bar({{"widget/scaleHeight", "0"}});
    const QImage image = bar.picture();
    for (int y = 70; y < 114; ++y) {
        for (int x = 20; x < 380; ++x) {
            QCOMPARE(image.pixelColor(x, y), kPanel);
        }
    }
}

void tst_ValueBarWidget::customHeightTakesItsFirstArgument()
{
    Bar bar;
    bar.picture();
    bar.bar().customHeight(0.3, 0.9);
    QCOMPARE(bar.picture(), Bar({{"widget/scaleHeight", "0.3"}}).picture());
    bar.bar().customHeight(7.0, 0.1);
    QCOMPARE(bar.picture(), Bar({{"widget/scaleHeight", "1"}}).picture());
    bar.bar().customHeight(-7.0, 0.1);
    QCOMPARE(bar.picture(), Bar({{"widget/scaleHeight", "0"}}).picture());
}

void tst_ValueBarWidget::thresholdsMoveTheGreenZone()
{
    Bar bar;
    QCOMPARE(bar.pixel(100, 110), kGreen);
    bar.bar().SetThreshold(0.25, 0.75);
    QCOMPARE(bar.pixel(100, 110), kRed);
    QCOMPARE(bar.pixel(150, 110), kGreen);
    QCOMPARE(bar.picture(),
             Bar({{"widget/minThreshold", "0.25"}, {"widget/maxThreshold", "0.75"}}).picture());
}

void tst_ValueBarWidget::pictureFollowsTheSize()
{
    Bar bar;
    bar.picture();
    for (const QSize& size : {QSize(210, 75), QSize(400, 121), QSize(401, 121), QSize(40, 30),
                              QSize(10, 10), QSize(3, 200), QSize(400, 120)}) {
        bar.widget->resize(size);
        QCOMPARE(bar.picture(), Bar({}, size).picture());
    }
}

void tst_ValueBarWidget::beforeInitialiseNothingIsDrawn()
{
    OutputBarDevice device;
    ValueBarWidget widget(&device, nullptr);
    widget.resize(400, 120);
    widget.input(0.5);
    QImage image = pictureOf(widget, kBehind);
    QCOMPARE(image.pixelColor(200, 60), kBehind);
    QPainter painter(&image);
    widget.updateScale(painter);
    widget.SetThreshold(0.0, 1.0);
    painter.end();
    QCOMPARE(image.pixelColor(200, 60), kBehind);
}

void tst_ValueBarWidget::deinitialiseForgetsAllUntilInitialise()
{
    Bar bar;
    bar.device.input(0.25);
    const QImage before = bar.picture();
    bar.widget->deinitialise();
    QVERIFY(!bar.widget->isInitialised());
    QCOMPARE(bar.pixel(200, 60), kBehind);
    bar.device.input(0.5);
    QCOMPARE(bar.pixel(200, 60), kBehind);

    bar.widget->initialise();
    QVERIFY(bar.widget->isInitialised());
    QCOMPARE(bar.picture(), Bar().picture());
    bar.device.input(0.25);
    QCOMPARE(bar.picture(), before);
}

void tst_ValueBarWidget::initialiseAllowsUpdates()
{
    Bar bar;
    bar.widget->setUpdatesEnabled(false);
    bar.widget->initialise();
    QVERIFY(bar.widget->updatesEnabled());
}

void tst_ValueBarWidget::valueDrawsLater()
{
    Bar bar;
    bar.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(bar.widget.get()));
    QCoreApplication::processEvents();
    EventCounter events(bar.widget.get());
    bar.device.input(0.25);
    bar.device.input(0.75);
    QCOMPARE(events.take(QEvent::Paint), 0);
    QCOMPARE(paintsToCome(events), 1);
    bar.device.setRunning(false);
    bar.device.input(0.25);
    QCoreApplication::processEvents();
    QCOMPARE(events.take(QEvent::Paint), 0);
}

void tst_ValueBarWidget::wrongSettingsStillDrawPanelAndPointer_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    for (const char* step : {"widget/digitsStep", "widget/dashesStep"}) {
        for (const char* text : {"0", "-0.5", "nan", "inf", "1e-300", "1e-5"}) {
            QTest::addRow("%s %s", step, text) << step << text;
        }
    }
    QTest::newRow("huge precision") << "widget/precision"
                                    << "1e300";
    QTest::newRow("precision of no number") << "widget/precision"
                                            << "nan";
    QTest::newRow("negative precision") << "widget/precision"
                                        << "-3";
    QTest::newRow("thresholds at infinity") << "widget/maxThreshold"
                                            << "inf";
    QTest::newRow("reversed thresholds") << "widget/minThreshold"
                                         << "9";
    QTest::newRow("huge maximum") << "widget/maxValue"
                                  << "1e308";
}

void tst_ValueBarWidget::wrongSettingsStillDrawPanelAndPointer()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    Bar bar({{name, text}});
    bar.device.input(0.5);
    QVERIFY(!pointerColumns(bar).isEmpty());
    QCOMPARE(bar.pixel(300, 20), kPanel);
    const QColor band = bar.pixel(300, 56);
    QVERIFY(band == kRed || band == kGreen);
}

QTEST_MAIN(tst_ValueBarWidget)
#include "tst_ValueBarWidget.moc"
