// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/Waveform.h"
#include "TestMain.h"

#include <QtTest>

#include <cmath>
#include <limits>

using norvo::DropOuts;
using norvo::Waveform;

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Eight ticks a period, from 8 to 12.
Waveform waveform(Waveform::Shape shape)
{
    Waveform wave;
    wave.shape = shape;
    wave.periodSeconds = 0.8;
    wave.amplitude = 2.0;
    wave.offset = 10.0;
    wave.intervalMs = 100;
    return wave;
}

bool isNear(double value, double expected)
{
    return std::abs(value - expected) < 1e-12;
}

} // namespace

class tst_Waveform : public QObject
{
    Q_OBJECT

private slots:
    void shapes_data();
    void shapes();
    void doesNotDrift();
    void noiseFillsItsBand_data();
    void noiseFillsItsBand();
    void sameSeedSameNoise();
    void randomValuesAreFixedForAllTime();
    void oddPeriodsStandStill_data();
    void oddPeriodsStandStill();
    void dropOuts_data();
    void dropOuts();
};

void tst_Waveform::shapes_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<int>("tick");
    QTest::addColumn<double>("value");

    const int sine = int(Waveform::Shape::Sine);
    const int ramp = int(Waveform::Shape::Ramp);
    const int square = int(Waveform::Shape::Square);
    QTest::newRow("sineBeginsInTheMiddle") << sine << 0 << 10.0;
    QTest::newRow("sineTop") << sine << 2 << 12.0;
    QTest::newRow("sineBottom") << sine << 6 << 8.0;
    QTest::newRow("sineNextPeriod") << sine << 10 << 12.0;
    QTest::newRow("sineBeforeTheStart") << sine << -2 << 8.0;
    QTest::newRow("rampBeginsAtTheBottom") << ramp << 0 << 8.0;
    QTest::newRow("rampMiddle") << ramp << 4 << 10.0;
    QTest::newRow("rampEnd") << ramp << 7 << 11.5;
    QTest::newRow("rampNextPeriod") << ramp << 8 << 8.0;
    QTest::newRow("rampBeforeTheStart") << ramp << -2 << 11.0;
    QTest::newRow("squareBeginsAtTheTop") << square << 0 << 12.0;
    QTest::newRow("squareLastAtTheTop") << square << 3 << 12.0;
    QTest::newRow("squareFirstAtTheBottom") << square << 4 << 8.0;
    QTest::newRow("squareNextPeriod") << square << 8 << 12.0;
}

void tst_Waveform::shapes()
{
    QFETCH(int, shape);
    QFETCH(int, tick);
    QFETCH(double, value);

    QVERIFY(isNear(waveform(Waveform::Shape(shape)).valueAt(tick), value));
}

void tst_Waveform::doesNotDrift()
{
    const Waveform wave = waveform(Waveform::Shape::Sine);
    QCOMPARE(wave.valueAt(8000000000002), wave.valueAt(2));
}

void tst_Waveform::noiseFillsItsBand_data()
{
    QTest::addColumn<bool>("asShape");
    QTest::newRow("shape") << true;
    QTest::newRow("added") << false;
}

void tst_Waveform::noiseFillsItsBand()
{
    QFETCH(bool, asShape);

    Waveform wave = waveform(Waveform::Shape::Noise);
    wave.amplitude = asShape ? 2.0 : 0.0;
    wave.noise = asShape ? 0.0 : 2.0;
    double lowest = kInfinity;
    double highest = -kInfinity;
    double sum = 0.0;
    constexpr int count = 100000;
    for (int tick = 0; tick < count; ++tick) {
        const double value = wave.valueAt(tick);
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
        sum += value;
    }
    QVERIFY(lowest >= 8.0 && lowest < 8.01);
    QVERIFY(highest <= 12.0 && highest > 11.99);
    QVERIFY(std::abs(sum / count - 10.0) < 0.02);
}

void tst_Waveform::sameSeedSameNoise()
{
    Waveform one = waveform(Waveform::Shape::Noise);
    Waveform other = one;
    int equal = 0;
    for (int tick = -10; tick < 10; ++tick) {
        other.seed = one.seed;
        QCOMPARE(one.valueAt(tick), other.valueAt(tick));
        other.seed = one.seed + 1;
        equal += one.valueAt(tick) == other.valueAt(tick);
    }
    QCOMPARE(equal, 0);
}

void tst_Waveform::randomValuesAreFixedForAllTime()
{
    Waveform wave;
    wave.shape = Waveform::Shape::Noise;
    wave.seed = 42;
    QCOMPARE(wave.valueAt(0), 0.3954726832315554);
    QCOMPARE(wave.valueAt(1), -0.31341615580265314);
}

void tst_Waveform::oddPeriodsStandStill_data()
{
    QTest::addColumn<double>("period");

    QTest::newRow("zero") << 0.0;
    QTest::newRow("negative") << -1.0;
    QTest::newRow("nan") << kNan;
    QTest::newRow("infinite") << kInfinity;
    QTest::newRow("infiniteInMilliseconds") << 1e308;
}

void tst_Waveform::oddPeriodsStandStill()
{
    QFETCH(double, period);

    Waveform wave = waveform(Waveform::Shape::Ramp);
    wave.periodSeconds = period;
    QCOMPARE(wave.valueAt(-3), 8.0);
    QCOMPARE(wave.valueAt(12345), 8.0);
    wave.periodSeconds = 5e-324; // Odd, but a period: any phase will do.
    QVERIFY(wave.valueAt(12345) >= 8.0 && wave.valueAt(12345) <= 12.0);
}

void tst_Waveform::dropOuts_data()
{
    QTest::addColumn<double>("on");
    QTest::addColumn<double>("off");
    QTest::addColumn<QString>("pattern"); // Of ticks of 100 ms: # a value, . silence.

    QTest::newRow("none") << 0.3 << 0.0 << "##########";
    QTest::newRow("regular") << 0.3 << 0.2 << "###..###..";
    QTest::newRow("neverOn") << 0.0 << 0.2 << "..........";
    QTest::newRow("negativeOn") << -1.0 << 0.2 << "..........";
    QTest::newRow("nanOn") << kNan << 0.2 << "..........";
    QTest::newRow("negativeOff") << 0.3 << -1.0 << "##########";
    QTest::newRow("nanOff") << 0.3 << kNan << "##########";
    QTest::newRow("onForEver") << kInfinity << 0.2 << "##########";
    QTest::newRow("offForEver") << 0.3 << kInfinity << "###.......";
}

void tst_Waveform::dropOuts()
{
    QFETCH(double, on);
    QFETCH(double, off);

    QString pattern;
    for (int tick = 0; tick < 10; ++tick) {
        pattern += DropOuts{on, off}.isSilentAt(tick, 100) ? '.' : '#';
    }
    QTEST(pattern, "pattern");
}

NORVO_APPLESS_TEST(tst_Waveform)
#include "tst_Waveform.moc"
