// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LumenoGeometry.h"
#include "TestMain.h"

#include <QtTest>

#include <limits>

using namespace norvo::lumeno;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr int kTextHeight = 20;

/// From 0 to 10 on 110 pixels: base at 155, 11 pixels a unit.
const Scale kScale{0.0, 10.0, 5.0, 1.0};

norvo::ValueAxis axisOf(const Scale& scale)
{
    return valueAxis(scale, 200.0, kTextHeight);
}

QVector<double> valuesOf(const QVector<Digit>& digits)
{
    QVector<double> values;
    for (const Digit& digit : digits) {
        values.append(digit.value);
    }
    return values;
}

} // namespace

class tst_LumenoGeometry : public QObject
{
    Q_OBJECT

private slots:
    void barWidthIsScaledAndCut();
    void withoutCaptionTheHeightGrowsBy15Percent();
    void valuesLieBetweenMarginsOfTextHeight();
    void numbersStandAtEachStep();
    void shortDashesLeaveTheNumbersOut();
    void fractionalStepsLeaveTheNumbersOut();
    void stepsAreCountedFromTheScalesStart();
    void dashNearANumberIsLeftOut();
    void dashesReachFurtherLeftThanRight();
    void digitBoxStandsRightOfTheBar();
    void backslashNPartsTheCaption_data();
    void backslashNPartsTheCaption();
    void lastCaptionLineEndsAtTheHeight();
    void barRisesFromTheBase_data();
    void barRisesFromTheBase();
    void unitsStandBesideTheValue();
    void scaleThatCannotBeDrawnHasNoMarks_data();
    void scaleThatCannotBeDrawnHasNoMarks();
    void marksAsManyAsPixelsAreAllThere();
    void marksThatSharePixelsAreBounded_data();
    void marksThatSharePixelsAreBounded();
};

void tst_LumenoGeometry::barWidthIsScaledAndCut()
{
    QCOMPARE(scaledBarWidth(8), 12);
    QCOMPARE(scaledBarWidth(5), 7);
    QCOMPARE(scaledBarWidth(0), 0);
}

void tst_LumenoGeometry::withoutCaptionTheHeightGrowsBy15Percent()
{
    QCOMPARE(usedHeight(200, true), 200.0);
    QCOMPARE(usedHeight(200, false), 230.0);
}

void tst_LumenoGeometry::valuesLieBetweenMarginsOfTextHeight()
{
    // 2.25 x 20 = 45 pixels at either end.
    const norvo::ValueAxis axis = axisOf(kScale);
    QCOMPARE(axis.y(0.0), 155.0);
    QCOMPARE(axis.y(10.0), 45.0);
    QCOMPARE(axis.y(5.0), 100.0);
    QCOMPARE(axis.y(-1.0), 166.0);
}

void tst_LumenoGeometry::numbersStandAtEachStep()
{
    const QVector<Digit> marks = digits(kScale, axisOf(kScale));
    QCOMPARE(valuesOf(marks), (QVector<double>{0.0, 5.0, 10.0}));
    QCOMPARE(marks[1].y, 100.0);
}

void tst_LumenoGeometry::shortDashesLeaveTheNumbersOut()
{
    const QVector<QLine> dashes = shortDashes(kScale, axisOf(kScale), 12);
    QVector<int> heights;
    for (const QLine& dash : dashes) {
        heights.append(dash.y1());
    }
    QCOMPARE(heights, (QVector<int>{144, 133, 122, 111, 89, 78, 67, 56}));
}

void tst_LumenoGeometry::fractionalStepsLeaveTheNumbersOut()
{
    const Scale scale{0.0, 1.0, 0.5, 0.1};
    QCOMPARE(valuesOf(digits(scale, axisOf(scale))), (QVector<double>{0.0, 0.5, 1.0}));
    QCOMPARE(shortDashes(scale, axisOf(scale), 12).size(), 8);
}

void tst_LumenoGeometry::dashesReachFurtherLeftThanRight()
{
    // -0.45 x 12 = -5.4, 0.3 x 12 = 3.6, 0.5 x 12 = 6.
    QCOMPARE(shortDashes(kScale, axisOf(kScale), 12).first(), QLine(-5, 144, 3, 144));
    QCOMPARE(longDash(100.9, 12), QLine(-5, 100, 6, 100));
}

void tst_LumenoGeometry::digitBoxStandsRightOfTheBar()
{
    QCOMPARE(digitBox(100.0, 12, 30, 20), QRectF(9.0, 89.0, 30.0, 20.0));
}

void tst_LumenoGeometry::backslashNPartsTheCaption_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("two lines") << "Oil\\npump" << QStringList{"Oil", "pump"};
    QTest::newRow("one") << "Oil" << QStringList{"Oil"};
    QTest::newRow("empty lines are left out") << "\\nOil\\n\\npump" << QStringList{"Oil", "pump"};
    QTest::newRow("a real line feed does not part") << "Oil\npump" << QStringList{"Oil\npump"};
    QTest::newRow("none") << "" << QStringList{};
}

void tst_LumenoGeometry::backslashNPartsTheCaption()
{
    QFETCH(QString, name);

    QTEST(captionLines(name), "lines");
}

void tst_LumenoGeometry::lastCaptionLineEndsAtTheHeight()
{
    QCOMPARE(captionBox(0, 2, 200.0, 50, 20), QRectF(-25.0, 160.0, 50.0, 20.0));
    QCOMPARE(captionBox(1, 2, 200.0, 30, 20), QRectF(-15.0, 180.0, 30.0, 20.0));
}

void tst_LumenoGeometry::barRisesFromTheBase_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QRectF>("rect");

    // As wide as the bar itself, from half its scaled width on the left: -6 to 2.
    QTest::newRow("middle") << 5.0 << QRectF(-6.0, 155.0, 8.0, -55.0);
    QTest::newRow("start") << 0.0 << QRectF(-6.0, 155.0, 8.0, 0.0);
    QTest::newRow("below the start fills downwards") << -1.0 << QRectF(-6.0, 155.0, 8.0, 11.0);
    QTest::newRow("far above stops below the value's text")
        << 1000.0 << QRectF(-6.0, 155.0, 8.0, -125.0);
    QTest::newRow("infinite stops there too") << kInfinity << QRectF(-6.0, 155.0, 8.0, -125.0);
    QTest::newRow("no number has no bar") << kNoNumber << QRectF();
}

void tst_LumenoGeometry::barRisesFromTheBase()
{
    QFETCH(double, value);

    QTEST(bar(value, axisOf(kScale), 8, 30), "rect");
}

void tst_LumenoGeometry::unitsStandBesideTheValue()
{
    QCOMPARE(valuePosition(50), QPointF(-26.0, 0.0));
    // 0.93 x 30 - 18 = 9.9.
    QCOMPARE(unitsPosition(50, 30, 18), QPointF(26.0, 9.9));
}

void tst_LumenoGeometry::scaleThatCannotBeDrawnHasNoMarks_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");

    QTest::newRow("step 0") << 0.0 << 1.0 << 0.0;
    QTest::newRow("negative step") << 0.0 << 1.0 << -0.5;
    QTest::newRow("step is no number") << 0.0 << 1.0 << kNoNumber;
    QTest::newRow("equal ends") << 1.0 << 1.0 << 0.5;
    QTest::newRow("reversed ends") << 1.0 << 0.0 << 0.5;
    QTest::newRow("infinite end") << 0.0 << kInfinity << 0.5;
    QTest::newRow("infinite range") << -1e308 << 1e308 << 1e300;
    QTest::newRow("start is no number") << kNoNumber << 1.0 << 0.5;
}

void tst_LumenoGeometry::scaleThatCannotBeDrawnHasNoMarks()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);

    const Scale scale{min, max, step, step};
    QVERIFY(digits(scale, axisOf(scale)).isEmpty());
    QVERIFY(shortDashes(scale, axisOf(scale), 12).isEmpty());
}

void tst_LumenoGeometry::marksAsManyAsPixelsAreAllThere()
{
    const Scale scale{0.0, 110.0, 1.0, 0.25}; // On 110 pixels.
    QCOMPARE(digits(scale, axisOf(scale)).size(), 111);
    QCOMPARE(shortDashes(scale, axisOf(scale), 12).size(), 330);
}

void tst_LumenoGeometry::marksThatSharePixelsAreBounded_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("step");

    QTest::newRow("many") << 0.0 << 1000.0 << 0.1;
    QTest::newRow("too many to walk") << 0.0 << 1.0 << 1e-300;
    QTest::newRow("too many to count") << 0.0 << 1e300 << 1e-300;
    QTest::newRow("step that does not move the value") << 1e17 << 1e17 + 64.0 << 1.0;
}

void tst_LumenoGeometry::marksThatSharePixelsAreBounded()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, step);

    // Eight on each of 111 pixels at most, and one at least but where the value stands still.
    const Scale scale{min, max, step, step * 0.3};
    const QVector<Digit> numbers = digits(scale, axisOf(scale));
    const QVector<QLine> dashes = shortDashes(scale, axisOf(scale), 12);
    QVERIFY(numbers.size() <= 8 * 111);
    QVERIFY(dashes.size() <= 8 * 111);
    QVERIFY(numbers.size() >= (min < 1e17 ? 110 : 1));
}

void tst_LumenoGeometry::dashNearANumberIsLeftOut()
{
    const auto dashes = [](double step) {
        const Scale scale{0.0, 1.0, 0.5, step};
        return shortDashes(scale, axisOf(scale), 12).size();
    };
    QCOMPARE(dashes(0.5 + 0.5 * 0.009), 0); // within 0.01 steps of the number at 0.5
    QCOMPARE(dashes(0.5 + 0.5 * 0.011), 1);
    QCOMPARE(dashes(0.5 - 0.5 * 0.004), 0); // and at 1: 0.008
    QCOMPARE(dashes(0.5 - 0.5 * 0.011), 2);
}

void tst_LumenoGeometry::stepsAreCountedFromTheScalesStart()
{
    const Scale scale{0.25, 2.25, 1.0, 0.25};
    QCOMPARE(valuesOf(digits(scale, axisOf(scale))), (QVector<double>{0.25, 1.25, 2.25}));
    QCOMPARE(shortDashes(scale, axisOf(scale), 12).size(), 6); // one and two are no numbers of it
}

NORVO_APPLESS_TEST(tst_LumenoGeometry)
#include "tst_LumenoGeometry.moc"
