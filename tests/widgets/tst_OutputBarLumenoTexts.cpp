// SPDX-License-Identifier: GPL-3.0-or-later

#include "LumenoGauge.h"
#include "TestMain.h"

#include <QtTest>

/// What the scaled bar gauge writes, and where.
class tst_OutputBarLumenoTexts : public QObject
{
    Q_OBJECT

private slots:
    void digitsStandRightOfTheirDashes();
    void negativeDigitsHaveNoLeadingBlank();
    void noInputYetReadsDashWithoutBarAndTrace();
    void unitsStandBesideTheValue();
    void captionStandsAtTheBottom();
    void captionTypedWithBackslashNHasTwoLines();
    void realLineFeedDoesNotSplitTheCaption();
    void marksInItsTextsAreShownVerbatim();
    void wrongSettingsStillDrawTheValue_data();
    void wrongSettingsStillDrawTheValue();
};

void tst_OutputBarLumenoTexts::digitsStandRightOfTheirDashes()
{
    LumenoGauge gauge;
    const QFont font = LumenoGauge::textFont();
    const double height = LumenoGauge::textHeight();
    for (const auto& [value, text] :
         {std::pair(0.0, " 0.0"), std::pair(0.5, " 0.5"), std::pair(1.0, " 1.0")}) {
        const QRectF box(3.0 + 6.0, gauge.y(value) - 1.0 - 0.5 * height, advance(font, text),
                         height);
        QVERIFY2(shows(gauge, box, font, Qt::blue, text), text);
    }
}

void tst_OutputBarLumenoTexts::negativeDigitsHaveNoLeadingBlank()
{
    LumenoGauge gauge({{"widget/minValue", "-1"}, {"widget/digitsStep", "1"}});
    const QFont font = LumenoGauge::textFont();
    const double height = LumenoGauge::textHeight();
    const QRectF lowest(9.0, gauge.y(0.0) - 1.0 - 0.5 * height, advance(font, "-1.0"), height);
    QVERIFY(shows(gauge, lowest, font, Qt::blue, "-1.0"));
    const QRectF middle(9.0, gauge.y(0.5) - 1.0 - 0.5 * height, advance(font, " 0.0"), height);
    QVERIFY(shows(gauge, middle, font, Qt::blue, " 0.0"));
}

void tst_OutputBarLumenoTexts::noInputYetReadsDashWithoutBarAndTrace()
{
    LumenoGauge gauge;
    const QFont font = LumenoGauge::textFont(22, true);
    const double width = advance(font, "-");
    const QRectF box(-1.0 - 0.5 * width, 0.0, width + 2.0, LumenoGauge::valueHeight());
    QVERIFY(shows(gauge, box, font, Qt::red, "-"));
    const QImage image = gauge.picture();
    const int below = LumenoGauge::valueHeight();
    QCOMPARE(countAccent(image.copy(0, below, image.width(), image.height() - below)), 0);
    QCOMPARE(
        marksDown(image, gauge.centre() + 5, int(gauge.y(1.0)) - 4, int(gauge.y(0.0)) + 4).size(),
        3);
}

void tst_OutputBarLumenoTexts::unitsStandBesideTheValue()
{
    LumenoGauge gauge({{"widget/units", "m / s"}});
    gauge.device.input(0.5);
    const QFont font = LumenoGauge::textFont();
    const double value = advance(LumenoGauge::textFont(22, true), "0.5");
    const QRectF box(0.5 * value + 1.0,
                     0.93 * LumenoGauge::valueHeight() - LumenoGauge::textHeight(),
                     advance(font, "m / s"), LumenoGauge::textHeight());
    QVERIFY(shows(gauge, box, font, Qt::blue, "m / s"));
}

void tst_OutputBarLumenoTexts::captionStandsAtTheBottom()
{
    for (const QSize& size : {QSize(90, 200), QSize(121, 301), QSize(240, 600)}) {
        LumenoGauge gauge({{"widget/name", "Oil pump"}}, size);
        const QFont font = LumenoGauge::textFont();
        const double width = advance(font, "Oil pump");
        const double height = LumenoGauge::textHeight();
        QVERIFY(shows(gauge, {-0.5 * width, gauge.height() - height, width, height}, font, Qt::blue,
                      "Oil pump"));
    }
}

void tst_OutputBarLumenoTexts::captionTypedWithBackslashNHasTwoLines()
{
    LumenoGauge gauge({{"widget/name", "Oil\\npump"}});
    const QFont font = LumenoGauge::textFont();
    const double height = LumenoGauge::textHeight();
    double top = gauge.height() - 2.0 * height;
    for (const char* line : {"Oil", "pump"}) {
        const double width = advance(font, line);
        QVERIFY2(shows(gauge, {-0.5 * width, top, width, height}, font, Qt::blue, line), line);
        top += height;
    }
}

void tst_OutputBarLumenoTexts::realLineFeedDoesNotSplitTheCaption()
{
    LumenoGauge gauge({{"widget/name", "Oil\npump"}});
    LumenoGauge inOneLine({{"widget/name", "Oil pump"}});
    QCOMPARE(gauge.picture(), inOneLine.picture());
}

void tst_OutputBarLumenoTexts::wrongSettingsStillDrawTheValue_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    for (const char* step : {"widget/digitsStep", "widget/dashesStep"}) {
        for (const char* text : {"0", "-0.5", "nan", "inf", "1e-300", "1e-5"}) {
            QTest::addRow("%s %s", step, text) << step << text;
        }
    }
    QTest::newRow("equal ends") << "widget/maxValue"
                                << "0";
    QTest::newRow("reversed ends") << "widget/maxValue"
                                   << "-1";
    QTest::newRow("huge maximum") << "widget/maxValue"
                                  << "1e308";
    QTest::newRow("infinite minimum") << "widget/minValue"
                                      << "-inf";
    QTest::newRow("huge bar width") << "widget/barWidth"
                                    << "2147483647";
    QTest::newRow("negative bar width") << "widget/barWidth"
                                        << "-2147483648";
}

void tst_OutputBarLumenoTexts::wrongSettingsStillDrawTheValue()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    LumenoGauge gauge({{name, text}});
    gauge.device.input(0.5);
    QTest::qSleep(2); // The next value comes at another time.
    gauge.device.input(0.5);
    const QFont font = LumenoGauge::textFont(22, true);
    const double width = advance(font, "0.5");
    const QRectF box(-1.0 - 0.5 * width, 0.0, width + 2.0, LumenoGauge::valueHeight() - 3);
    QVERIFY(shows(gauge, box, font, Qt::red, "0.5"));
}

void tst_OutputBarLumenoTexts::marksInItsTextsAreShownVerbatim()
{
    LumenoGauge gauge({{"widget/units", "<b>V</b>"}, {"widget/name", "<i>a</i>"}}, {240, 300});
    gauge.device.input(0.5);
    const QFont font = LumenoGauge::textFont();
    const double value = advance(LumenoGauge::textFont(22, true), "0.5");
    const double height = LumenoGauge::textHeight();
    const QRectF units(0.5 * value + 1.0, 0.93 * LumenoGauge::valueHeight() - height,
                       advance(font, "<b>V</b>") + 20.0, height);
    QVERIFY(shows(gauge, units, font, Qt::blue, "<b>V</b>"));
    const double width = advance(font, "<i>a</i>");
    QVERIFY(shows(gauge, {-0.5 * width, gauge.height() - height, width, height}, font, Qt::blue,
                  "<i>a</i>"));
}

NORVO_TEST(tst_OutputBarLumenoTexts)
#include "tst_OutputBarLumenoTexts.moc"
