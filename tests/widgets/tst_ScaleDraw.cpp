// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/Looks.h"
#include "widgets/ScaleDraw.h"
#include "TestMain.h"

#include <QPainter>
#include <QtTest>

#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

const QRect kRegion(5, 20, 140, 60);

/// From 0 to 1 with a number every 0.5 and a tick every 0.1: 14 gaps of 10 pixels.
ScaleDraw standardScale()
{
    ScaleDraw scale(0.0, 1.0, 0.5, 0.1, 0.0);
    scale.setRegion(kRegion);
    return scale;
}

} // namespace

class tst_ScaleDraw : public QObject
{
    Q_OBJECT

private slots:
    void defaultsGive15ShortTicksAnd3Numbers();
    void shortTicksStartAtTheRegionsEdgeLongOnesAtTheScales();
    void marginsOfTwoDashesLieAroundTheScale();
    void tickHeightsAreSharesOfTheRegion();
    void greenZoneIsInclusiveAndCutTowardZero_data();
    void greenZoneIsInclusiveAndCutTowardZero();
    void settingTheRangeResetsTheGreenZone();
    void textIsCentredUnderItsTick();
    void precisionIsCutTowardZero();
    void numbersAreBoldArialOf14Points();
    void rangeOfZeroHasOneNumberAtTheStartAndNoGreenZone();
    void scaleThatCannotBeDrawnHasNoTicks_data();
    void scaleThatCannotBeDrawnHasNoTicks();
    void ticksThatOutnumberThePixelsFillTheScale_data();
    void ticksThatOutnumberThePixelsFillTheScale();
    void numbersTooDenseToCountStillReachTheEndOfTheRange();
    void reversedRangeHasTheSameTicks();
    void drawsItsColoursWhereTheGeometrySays();
    void drawingHugeValuesEnds();
};

void tst_ScaleDraw::defaultsGive15ShortTicksAnd3Numbers()
{
    const ScaleDraw scale = standardScale();
    QCOMPARE(scale.dashCount(), 15);
    QCOMPARE(scale.digitCount(), 3);
}

void tst_ScaleDraw::shortTicksStartAtTheRegionsEdgeLongOnesAtTheScales()
{
    const ScaleDraw scale = standardScale();
    QCOMPARE(scale.dash(0).x1(), 5);
    QCOMPARE(scale.dash(1).x1(), 15);
    QCOMPARE(scale.dash(14).x1(), 145);
    QCOMPARE(scale.digitDash(0).x1(), 25);
    QCOMPARE(scale.digitDash(1).x1(), 75);
    QCOMPARE(scale.digitDash(2).x1(), 125);
}

void tst_ScaleDraw::marginsOfTwoDashesLieAroundTheScale()
{
    double start = 0.0;
    double end = 0.0;
    standardScale().getValuePxRange(start, end);
    QCOMPARE(start, 25.0);
    QCOMPARE(end, 125.0);
}

void tst_ScaleDraw::tickHeightsAreSharesOfTheRegion()
{
    // 0.07 x 60 = 4.2 above; 0.4 x 60 = 24 and 0.6 x 60 = 36 high.
    const ScaleDraw scale = standardScale();
    QCOMPARE(scale.dash(3), QLine(35, 24, 35, 48));
    QCOMPARE(scale.digitDash(1), QLine(75, 24, 75, 60));
}

void tst_ScaleDraw::greenZoneIsInclusiveAndCutTowardZero_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<QRect>("zone");

    QTest::newRow("whole scale") << 0.0 << 1.0 << QRect(QPoint(25, 20), QPoint(124, 79));
    QTest::newRow("middle") << 0.25 << 0.75 << QRect(QPoint(50, 20), QPoint(99, 79));
    QTest::newRow("cut") << 0.125 << 0.5 << QRect(QPoint(37, 20), QPoint(73, 79));
    QTest::newRow("beyond the scale") << -1.0 << 2.0 << QRect(QPoint(-75, 20), QPoint(224, 79));
    QTest::newRow("reversed keeps its left edge")
        << 0.75 << 0.25 << QRect(QPoint(100, 20), QPoint(149, 79));
    QTest::newRow("empty") << 0.5 << 0.5 << QRect(QPoint(75, 20), QPoint(74, 79));
    QTest::newRow("without an end") << 0.5 << kInfinity << QRect();
    QTest::newRow("without a beginning") << -kInfinity << 0.5 << QRect();
}

void tst_ScaleDraw::greenZoneIsInclusiveAndCutTowardZero()
{
    QFETCH(double, low);
    QFETCH(double, high);

    ScaleDraw scale = standardScale();
    scale.setGreenZone(low, high);
    QTEST(scale.greenZone(), "zone");
}

void tst_ScaleDraw::settingTheRangeResetsTheGreenZone()
{
    ScaleDraw scale = standardScale();
    scale.setGreenZone(0.25, 0.75);
    scale.setRange(0.0, 10.0, 5.0, 1.0, 0.0);
    QCOMPARE(scale.greenZone(), QRect(QPoint(25, 20), QPoint(124, 79)));
}

void tst_ScaleDraw::textIsCentredUnderItsTick()
{
    const int textHeight = QFontMetrics(QFont("Arial", 14, QFont::Bold)).height();
    const ScaleDraw scale = standardScale();
    // The tick is at 75, and 20 + 0.6 x 60 = 56.
    QCOMPARE(scale.textPosition(1, 10), QPoint(70, 56 + textHeight));
    QCOMPARE(scale.textPosition(1, 11), QPoint(69, 56 + textHeight));
}

void tst_ScaleDraw::rangeOfZeroHasOneNumberAtTheStartAndNoGreenZone()
{
    ScaleDraw scale(3.0, 3.0, 0.5, 0.1, 0.0);
    scale.setRegion(kRegion);
    QCOMPARE(scale.dashCount(), 5);
    QCOMPARE(scale.digitCount(), 1);
    QCOMPARE(scale.digitDash(0).x1(), 5 + 2 * 35);
    QVERIFY(scale.greenZone().isEmpty());
}

void tst_ScaleDraw::scaleThatCannotBeDrawnHasNoTicks_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");

    QTest::newRow("step 0") << 0.0 << 1.0 << 0.0;
    QTest::newRow("negative step") << 0.0 << 1.0 << -0.1;
    QTest::newRow("step is no number") << 0.0 << 1.0 << kNoNumber;
    QTest::newRow("infinite range") << -1e308 << 1e308 << 1.0;
    QTest::newRow("infinite end") << 0.0 << kInfinity << 1.0;
    QTest::newRow("end is no number") << 0.0 << kNoNumber << 1.0;
}

void tst_ScaleDraw::scaleThatCannotBeDrawnHasNoTicks()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);

    ScaleDraw scale(min, max, step, step, 0.0);
    scale.setRegion(kRegion);
    QCOMPARE(scale.dashCount(), 0);
    QCOMPARE(scale.digitCount(), 0);
    double start = 0.0;
    double end = 0.0;
    scale.getValuePxRange(start, end);
    QVERIFY(start >= 5.0 && start < 6.0);
    QVERIFY(end <= 145.0 && end > 144.0);
}

void tst_ScaleDraw::ticksThatOutnumberThePixelsFillTheScale_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("margin"); ///< Two gaps between the ticks.

    // 1 / 0.001 + 2 x 2 + 1 ticks have 1004 gaps.
    QTest::newRow("many") << 0.001 << 2.0 * 140.0 / 1004.0;
    QTest::newRow("too many to walk") << 1e-9 << 0.0;
    QTest::newRow("too many to count") << 1e-300 << 0.0;
}

void tst_ScaleDraw::ticksThatOutnumberThePixelsFillTheScale()
{
    QFETCH(double, step);
    QFETCH(double, margin);

    ScaleDraw scale(0.0, 1.0, 0.5, step, 0.0);
    scale.setRegion(kRegion);
    double start = 0.0;
    double end = 0.0;
    scale.getValuePxRange(start, end);
    QVERIFY(qAbs(start - 5.0 - margin) < 0.01);
    QVERIFY(qAbs(145.0 - margin - end) < 0.01);
    QCOMPARE(scale.digitCount(), 3);

    QImage image(150, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    scale.draw(painter);
    painter.end();
    for (int x = 5; x < 145; ++x) {
        QCOMPARE(image.pixelColor(x, 40), QColor("#F0F0F0"));
    }
}

void tst_ScaleDraw::numbersTooDenseToCountStillReachTheEndOfTheRange()
{
    // 100,000 is the most that a scale walks through: a smaller step is made as long.
    const auto picture = [](double digitsStep) {
        ScaleDraw scale(0.0, 1.0, digitsStep, 0.1, 2.0);
        scale.setRegion(kRegion);
        QImage image(200, 120, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        scale.drawText(painter);
        return image;
    };
    QVERIFY(picture(1e-5) != picture(0.5));
    QCOMPARE(picture(1e-7), picture(1e-5));
}

void tst_ScaleDraw::reversedRangeHasTheSameTicks()
{
    ScaleDraw scale(1.0, 0.0, 0.5, 0.1, 0.0);
    scale.setRegion(kRegion);
    QCOMPARE(scale.dashCount(), 15);
    QCOMPARE(scale.digitCount(), 3);
}

void tst_ScaleDraw::drawsItsColoursWhereTheGeometrySays()
{
    QImage image(150, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    ScaleDraw scale = standardScale();
    scale.setGreenZone(0.25, 0.75);
    scale.draw(painter);
    painter.end();

    QCOMPARE(image.pixelColor(10, 40), QColor("#FD454D")); // Red, between two short ticks.
    QCOMPARE(image.pixelColor(60, 78), QColor("#049143"));
    QCOMPARE(image.pixelColor(15, 35), QColor("#F0F0F0")); // A short tick.
    QCOMPARE(image.pixelColor(75, 55), QColor("#F0F0F0")); // A long one, below the short ones.
    QCOMPARE(image.pixelColor(15, 55), QColor("#FD454D"));
    QCOMPARE(image.pixelColor(5, 50), QColor("#C8C8C8")); // The frame.
    QCOMPARE(image.pixelColor(3, 50), QColor(Qt::white));
}

void tst_ScaleDraw::drawingHugeValuesEnds()
{
    QImage image(150, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    ScaleDraw scale(-1e308, 1e308, 1e308, 1e307, 1e300);
    scale.setRegion(kRegion);
    scale.setGreenZone(-kInfinity, kInfinity);
    scale.draw(painter);
    scale.setGreenZone(-1e308, 1e308);
    scale.draw(painter);
    scale.setRange(0.0, 1.0, 1e-300, 1e-300, 0.0);
    scale.draw(painter);
    scale.setRange(0.0, 1e-300, 1e-301, 1e-301, kNoNumber);
    scale.draw(painter);
    QVERIFY(scale.digitCount() > 0);
}

void tst_ScaleDraw::numbersAreBoldArialOf14Points()
{
    const QFont font = norvo::Looks::scaleFont();
    QCOMPARE(font.family(), QString("Arial"));
    QCOMPARE(font.pointSize(), 14);
    QCOMPARE(font.weight(), 75);
    QVERIFY(!font.italic());
}

void tst_ScaleDraw::precisionIsCutTowardZero()
{
    const auto boxOf = [](double precision) {
        ScaleDraw scale(0.0, 1.0, 0.5, 0.1, precision);
        scale.setRegion({5, 54, 390, 60});
        return scale.numbersBox();
    };
    QCOMPARE(boxOf(1.9), boxOf(1.0));
    QVERIFY(boxOf(1.9) != boxOf(2.0));
}

NORVO_TEST(tst_ScaleDraw)
#include "tst_ScaleDraw.moc"
