// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "LumenoGauge.h"
#include "MessageLog.h"
#include "TestMain.h"

#include <QtTest>

class tst_OutputBarLumeno : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlots();
    void withoutItsOwnDeviceNothingIsDrawn();
    void asksForItsRoom();
    void defaultScaleHasLongDashesAtDigitsAndShortOnesBetween_data();
    void defaultScaleHasLongDashesAtDigitsAndShortOnesBetween();
    void oneInputHasValueAndBarButNoTrace_data();
    void oneInputHasValueAndBarButNoTrace();
    void twoInputsHaveATrace();
    void barStopsBelowTheValuesText();
    void emptyCaptionStretchesTheScaleBy15Percent();
    void paletteChangeColoursTheScaleButNotTheAccent();
    void fontSizeBelowOneDrawsNothing_data();
    void fontSizeBelowOneDrawsNothing();
};

void tst_OutputBarLumeno::declaresItsSlots()
{
    QCOMPARE(methodTable(OutputBarLumeno::staticMetaObject),
             QStringList({"slot input(double)", "slot update()"}));
}

void tst_OutputBarLumeno::withoutItsOwnDeviceNothingIsDrawn()
{
    OutputBarDevice base;
    OutputBarLumeno widget(&base, nullptr);
    QCOMPARE(widget.minimumWidth(), 80);
    const MessageLog log;
    widget.initialise();
    QVERIFY(!widget.isInitialised());
    QVERIFY(!widget.findChild<QTimer*>());
    widget.resize(120, 300);
    widget.input(0.5);
    QImage empty(widget.size(), QImage::Format_RGB32);
    empty.fill(Qt::white);
    QCOMPARE(pictureOf(widget, Qt::white), empty);
}

void tst_OutputBarLumeno::asksForItsRoom()
{
    LumenoGauge gauge;
    QCOMPARE(gauge.widget->minimumSize(), QSize(70, 150));
    QCOMPARE(gauge.widget->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
    gauge.picture();
    QCOMPARE(gauge.widget->minimumSize(), QSize(80, 150));
}

void tst_OutputBarLumeno::defaultScaleHasLongDashesAtDigitsAndShortOnesBetween_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("90 x 200") << QSize(90, 200);
    QTest::newRow("120 x 300") << QSize(120, 300);
    QTest::newRow("240 x 600") << QSize(240, 600);
}

void tst_OutputBarLumeno::defaultScaleHasLongDashesAtDigitsAndShortOnesBetween()
{
    QFETCH(QSize, size);
    LumenoGauge gauge({}, size);
    const QImage image = gauge.picture();
    const int top = int(gauge.y(1.0)) - 4;
    const int bottom = int(gauge.y(0.0)) + 4;
    // With a bar width of 8 the dashes reach from -5 to 3, the long ones to 6.
    for (const int x : {-4, 2}) {
        const QVector<double> all = marksDown(image, gauge.centre() + x, top, bottom);
        QCOMPARE(all.size(), 11);
        for (int i = 0; i < 11; ++i) {
            QVERIFY(qAbs(all[i] - gauge.y(1.0 - i * 0.1)) < 1.5);
        }
    }
    const QVector<double> digits = marksDown(image, gauge.centre() + 5, top, bottom);
    QCOMPARE(digits.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(qAbs(digits[i] - gauge.y(1.0 - i * 0.5)) < 1.5);
    }
    QCOMPARE(marksDown(image, gauge.centre() - 8, top, bottom).size(), 0);
}

void tst_OutputBarLumeno::oneInputHasValueAndBarButNoTrace_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("on the scale") << 0.65 << "0.7";
    QTest::newRow("below the minimum fills downwards") << -0.05 << "-0.1";
}

void tst_OutputBarLumeno::oneInputHasValueAndBarButNoTrace()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    LumenoGauge gauge({}, {120, 400});
    gauge.device.input(value);
    const QFont font = LumenoGauge::textFont(22, true);
    const double width = advance(font, text);
    const QRectF box(-1.0 - 0.5 * width, 0.0, width + 2.0, LumenoGauge::valueHeight());
    QVERIFY(shows(gauge, box, font, Qt::red, text));

    // The bar covers -6 to 2 around the centre, from the base to the value.
    const QImage image = gauge.picture();
    const int low = qRound(qMax(gauge.y(0.0), gauge.y(value)));
    const int high = qRound(qMin(gauge.y(0.0), gauge.y(value)));
    for (const int x : {-6, -2, 1}) {
        QCOMPARE(image.pixelColor(gauge.centre() + x, (low + high) / 2 + 5), QColor(Qt::red));
        QCOMPARE(image.pixelColor(gauge.centre() + x, low - 2), QColor(Qt::red));
        QCOMPARE(image.pixelColor(gauge.centre() + x, high + 2), QColor(Qt::red));
        QVERIFY(!isAccent(image.pixelColor(gauge.centre() + x, low + 2)));
        QVERIFY(!isAccent(image.pixelColor(gauge.centre() + x, high - 2)));
    }
    const int beside = (low + high) / 2;
    for (const int x : {-7, 2}) {
        QVERIFY(!isAccent(image.pixelColor(gauge.centre() + x, beside)));
    }
    QCOMPARE(countAccent(image.copy(0, high - 3, gauge.centre() - 6, low - high + 6)), 0);
}

void tst_OutputBarLumeno::barStopsBelowTheValuesText()
{
    for (const double value : {100.0, 1e300, qInf()}) {
        LumenoGauge gauge;
        gauge.device.input(value);
        const QImage image = gauge.picture();
        const int top = LumenoGauge::valueHeight();
        QCOMPARE(image.pixelColor(gauge.centre() - 4, top + 1), QColor(Qt::red));
        QCOMPARE(image.pixelColor(gauge.centre() - 4, int(gauge.y(0.0)) - 2), QColor(Qt::red));
    }
    LumenoGauge gauge;
    gauge.device.input(qQNaN());
    QVERIFY(!isAccent(gauge.picture().pixelColor(gauge.centre() - 4, int(gauge.y(0.0)) - 2)));
}

void tst_OutputBarLumeno::emptyCaptionStretchesTheScaleBy15Percent()
{
    LumenoGauge gauge({{"widget/name", ""}}, {120, 200});
    gauge.device.input(0.9);
    const double base = 200.0 * 1.15 - gauge.margin();
    QVERIFY(base > gauge.y(0.0) + 29.0);
    const QImage image = gauge.picture();
    QCOMPARE(image.pixelColor(gauge.centre() - 4, qRound(base) - 2), QColor(Qt::red));
    QVERIFY(!isAccent(image.pixelColor(gauge.centre() - 4, qRound(base) + 2)));
    const QVector<double> digits =
        marksDown(image, gauge.centre() + 5, int(gauge.margin()) - 4, int(base) + 4);
    QCOMPARE(digits.size(), 3);
    QVERIFY(qAbs(digits[0] - gauge.margin()) < 1.5);
    QVERIFY(qAbs(digits[2] - base) < 1.5);
}

void tst_OutputBarLumeno::paletteChangeColoursTheScaleButNotTheAccent()
{
    LumenoGauge gauge({{"widget/units", "l"}});
    gauge.device.input(0.5);
    const QImage before = gauge.picture();
    QPalette palette = gauge.widget->palette();
    palette.setColor(QPalette::Text, QColor(0, 160, 0));
    palette.setColor(QPalette::Highlight, QColor(0, 200, 200));
    gauge.widget->setPalette(palette);
    const QImage after = gauge.picture();
    QCOMPARE(countAccent(after), countAccent(before));
    int green = 0;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            const QColor colour = after.pixelColor(x, y);
            green += colour.green() > colour.blue() + 60 && colour.green() > colour.red() + 60;
            QVERIFY(!isText(colour));
            if (isText(before.pixelColor(x, y))) {
                QVERIFY(colour.green() > colour.blue());
            }
        }
    }
    QVERIFY(green > 100);
}

void tst_OutputBarLumeno::fontSizeBelowOneDrawsNothing_data()
{
    QTest::addColumn<QString>("fontSize");
    QTest::newRow("zero") << "0";
    QTest::newRow("negative") << "-15";
    QTest::newRow("no number") << "large";
}

void tst_OutputBarLumeno::fontSizeBelowOneDrawsNothing()
{
    QFETCH(QString, fontSize);
    LumenoGauge gauge({{"widget/fontSize", fontSize}});
    gauge.device.input(0.5);
    QImage empty(gauge.widget->size(), QImage::Format_RGB32);
    empty.fill(Qt::white);
    QCOMPARE(gauge.picture(), empty);
    QCOMPARE(gauge.widget->minimumWidth(), 70);
}

void tst_OutputBarLumeno::twoInputsHaveATrace()
{
    LumenoGauge gauge;
    const auto traced = [&] {
        // The newest point lies at the bar's left edge, six pixels left of the centre.
        return countAccent(
            gauge.picture().copy(gauge.centre() - 7, int(gauge.y(1.0)), 1, int(gauge.margin())));
    };
    gauge.device.input(0.0);
    QCOMPARE(traced(), 0);
    QTest::qSleep(2); // the next value comes at another time
    gauge.device.input(1.0);
    QVERIFY(traced() > 10);
}

NORVO_TEST(tst_OutputBarLumeno)
#include "tst_OutputBarLumeno.moc"
