// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"
#include "ArrayColumn.h"
#include "CurvePictures.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>

namespace plot = norvo::plot;

/// A curve of many points to a pixel against the whole of it. The class exists with the second
/// generation of the plot library alone.
class tst_DenseGraph : public QObject
{
    Q_OBJECT

private slots:
    void looksAsAllItsPointsDo_data();
    void looksAsAllItsPointsDo();
    void fewPointsAreDrawnByTheLibrary();
    void ruleOfPicturesSeesAMissingPeak_data();
    void ruleOfPicturesSeesAMissingPeak();
    void looksTheSameReversedAndAfterPointsHaveGone();
    void looksTheSameAsItScrolls();
    void pauseIsCrossedFromPointToPoint();
    void manyPointsBetweenGapsAddUpToALine();
    void pointsPutInFromOutsideAreSeen();
    void rangeFollowsWhatComesAndGoes();

private:
    static QVector<double> wave(int count, double step)
    {
        QVector<double> values(count);
        for (int i = 0; i < count; ++i) {
            values[i] = 0.9 * std::sin(i * step);
        }
        return values;
    }

    static QVector<double> noise(int count, double height)
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> between(-height, height);
        QVector<double> values = wave(count, 20.0 / count);
        for (double& value : values) {
            value = 0.5 * value + between(random);
        }
        return values;
    }
};

void tst_DenseGraph::looksAsAllItsPointsDo_data()
{
    QTest::addColumn<ArrayColumn>("array");
    QTest::addColumn<bool>("isFilled");
    QTest::addColumn<double>("scale");
    const double nan = qQNaN();
    const auto add = [](const char* name, const QVector<double>& values, bool isFilled = false,
                        double scale = 1) {
        QTest::newRow(name) << ArrayColumn{values} << isFilled << scale;
    };
    add("one point", {0.5});
    add("two points", {0.5, -0.5});
    add("slow wave", wave(10000, 0.001));
    add("wave", wave(10000, 0.005));
    add("quick wave", wave(20000, 0.03));
    add("wave on fine pixels", wave(10000, 0.005), false, 2);
    add("steps", [] {
        QVector<double> values = wave(10000, 0.005);
        for (double& value : values) {
            value = value > 0 ? 0.7 : -0.7;
        }
        return values;
    }());
    add("little noise", noise(10000, 0.03));
    add("much noise", noise(10000, 0.4));
    add("much noise on fine pixels", noise(10000, 0.4), false, 2);
    QVector<double> gaps = wave(10000, 0.005);
    for (int i = 100; i < gaps.size(); i += 1000) {
        std::fill_n(gaps.begin() + i, 200, nan);
    }
    add("gaps", gaps);
    QVector<double> breaks = noise(10000, 0.1);
    for (int i = 100; i < breaks.size(); i += 500) {
        breaks[i] = i % 1000 == 0 ? qInf() : nan;
    }
    add("breaks", breaks);
    QVector<double> jumps(10000, 0.7);
    for (int i = 1006; i < jumps.size() - 500; i += 1000) {
        std::fill_n(jumps.begin() + i, 500, -0.7);
        jumps[i + 500] = nan;
        jumps[i] = qInf();
    }
    add("jumps over gaps", jumps);
    QVector<double> spikes(10000, 0.0);
    for (int i = 100; i < spikes.size(); i += 999) {
        spikes[i] = i % 2 == 0 ? 0.8 : -0.8;
    }
    add("spikes", spikes);
    add("filled wave", wave(10000, 0.003), true);
    add("filled gaps", gaps, true);
    add("filled little noise", noise(3000, 0.03), true);
    add("filled much noise", noise(3000, 0.4), true);
}

void tst_DenseGraph::looksAsAllItsPointsDo()
{
    QFETCH(ArrayColumn, array);
    QFETCH(bool, isFilled);
    QFETCH(double, scale);
    QVector<double> keys;
    for (int i = 0; i < array.values.size(); ++i) {
        keys.append(i);
    }
    QImage pictures[2];
    for (const bool isOurs : {false, true}) {
        QCustomPlot bare;
        QCPGraph* const curve = isOurs ? PlotCurve::addTo(&bare) : bare.addGraph();
        curve->setData(keys, array.values, true);
        curve->setBrush(isFilled ? QBrush(QColor(0, 0, 255, 100)) : QBrush(Qt::NoBrush));
        bare.xAxis->setRange(0, qMax(1, keys.size() - 1));
        pictures[isOurs] = isOurs ? picture(bare, curve, scale) : wholePicture(bare, curve, scale);
    }
    QVERIFY(areAlike(pictures[1], pictures[0]));
}

void tst_DenseGraph::fewPointsAreDrawnByTheLibrary()
{
    QImage pictures[2];
    for (const bool isOurs : {false, true}) {
        QCustomPlot bare;
        QCPGraph* const curve = isOurs ? PlotCurve::addTo(&bare) : bare.addGraph();
        for (int i = 0; i < kWidth / 2; ++i) {
            curve->addData(i, i % 7 * 0.1);
        }
        bare.xAxis->setRange(0, kWidth / 2);
        pictures[isOurs] = picture(bare, curve);
    }
    QCOMPARE(pictures[1], pictures[0]);
}

void tst_DenseGraph::ruleOfPicturesSeesAMissingPeak_data()
{
    constexpr double pixel = 2.0 / (kHeight - 10);
    QTest::addColumn<double>("height");
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("missing") << 0.0 << true;
    QTest::newRow("three pixels lower") << 0.8 - 3 * pixel << true;
    QTest::newRow("half a pixel lower") << 0.8 - 0.5 * pixel << false;
}

/// A peak of one point among many.
void tst_DenseGraph::ruleOfPicturesSeesAMissingPeak()
{
    QFETCH(double, height);
    QFETCH(bool, isSeen);
    QImage pictures[2];
    for (const bool isWhole : {false, true}) {
        QCustomPlot bare;
        QCPGraph* const curve = isWhole ? bare.addGraph() : PlotCurve::addTo(&bare);
        for (int i = 0; i < 10000; ++i) {
            curve->addData(i, i == 7777 ? (isWhole ? 0.8 : height) : 0.0);
        }
        bare.xAxis->setRange(0, 9999);
        pictures[isWhole] = isWhole ? wholePicture(bare, curve) : picture(bare, curve);
    }
    QCOMPARE(areAlike(pictures[0], pictures[1]), !isSeen);
}

void tst_DenseGraph::looksTheSameReversedAndAfterPointsHaveGone()
{
    const QVector<double> values = noise(15000, 0.2);
    for (const bool isReversed : {false, true}) {
        QImage pictures[2];
        for (const bool isOurs : {false, true}) {
            QCustomPlot bare;
            PlotCurve* const ours = isOurs ? PlotCurve::addTo(&bare) : nullptr;
            QCPGraph* const curve = isOurs ? ours : bare.addGraph();
            for (int i = 0; i < values.size(); ++i) {
                if (isOurs) {
                    ours->dropBefore(i - 10000);
                    ours->append(i, values[i]);
                } else if (i >= values.size() - 1 - 10000) {
                    curve->addData(i, values[i]);
                }
            }
            bare.xAxis->setRange(5555.3, 15500);
            bare.xAxis->setRangeReversed(isReversed);
            pictures[isOurs] = isOurs ? picture(bare, curve) : wholePicture(bare, curve);
        }
        QVERIFY(areAlike(pictures[1], pictures[0]));
    }
}

/// Drawn again and again as points come and go, by more than, by less than and by parts of a pixel,
/// once after gaps have gone, once begun anew.
void tst_DenseGraph::looksTheSameAsItScrolls()
{
    constexpr int seen = 10000;
    QVector<double> values = noise(16000, 0.2);
    std::fill_n(values.begin() + 100, 200, qQNaN());
    QCustomPlot ours;
    PlotCurve* const curve = PlotCurve::addTo(&ours);
    int end = 0;
    for (const int count : {seen, 700, 33, 3, 2700, 33, 1}) {
        for (const int last = end + count; end < last; ++end) {
            curve->dropBefore(end - seen);
            curve->append(end, values[end]);
        }
        if (end == seen + 736) {
            curve->setData(QVector<double>{0, 1}, QVector<double>{0.5, 0.5});
            curve->replace({}, {});
            for (int i = end - seen; i < end; ++i) {
                curve->append(i, values[i]);
            }
        }
        QCustomPlot bare;
        QCPGraph* const whole = bare.addGraph();
        for (int i = qMax(0, end - 1 - seen); i < end; ++i) {
            whole->addData(i, values[i]);
        }
        for (QCustomPlot* const plot : {&ours, &bare}) {
            plot->xAxis->setRange(end - seen, end);
        }
        QVERIFY(areAlike(picture(ours, curve), wholePicture(bare, whole)));
    }
}

void tst_DenseGraph::pauseIsCrossedFromPointToPoint()
{
    QImage pictures[2];
    for (const bool isOurs : {false, true}) {
        QCustomPlot bare;
        QCPGraph* const curve = isOurs ? PlotCurve::addTo(&bare) : bare.addGraph();
        for (int i = 0; i < 10000; ++i) {
            const double key = i < 5010 ? i : i + 5000;
            curve->addData(key, i % 100 == 8 ? 0.9 : i < 5010 ? -0.5 : 0.2);
        }
        bare.xAxis->setRange(0, 15000);
        pictures[isOurs] = isOurs ? picture(bare, curve) : wholePicture(bare, curve);
    }
    QVERIFY(areAlike(pictures[1], pictures[0]));
}

void tst_DenseGraph::manyPointsBetweenGapsAddUpToALine()
{
    constexpr int points =
        70000; // So many to a pixel that what they cover cannot all be summed up.
    QCustomPlot bare;
    QCPGraph* const curve = PlotCurve::addTo(&bare);
    for (int i = 0; i < points; ++i) {
        curve->addData(i, i % 2 == 0 ? 0 : qQNaN());
    }
    bare.xAxis->setRange(0, points);
    const QImage image = picture(bare, curve);
    for (int x = 20; x < kWidth - 20; ++x) {
        QCOMPARE(image.pixelColor(x, kHeight / 2 - 1), QColor(Qt::blue));
    }
}

void tst_DenseGraph::pointsPutInFromOutsideAreSeen()
{
    QCustomPlot bare;
    PlotCurve* const curve = PlotCurve::addTo(&bare);
    const auto upper = [&] {
        bool found = false;
        return curve->getValueRange(found, QCP::sdBoth, QCPRange()).upper;
    };
    for (int i = 0; i < 1000; ++i) {
        curve->append(i, 1);
    }
    QCOMPARE(upper(), 1.0);
    curve->addData(500.5, 2);
    QCOMPARE(upper(), 2.0);
    curve->append(300.5, 3);
    QCOMPARE(upper(), 3.0);
    curve->data()->remove(300.5);
    QCOMPARE(upper(), 2.0);
    curve->replace({1, 2}, {5, 6});
    QCOMPARE(upper(), 6.0);
    curve->setData({1, 2}, {7, 6});
    QCOMPARE(upper(), 7.0);
}

void tst_DenseGraph::rangeFollowsWhatComesAndGoes()
{
    QCustomPlot bare;
    PlotCurve* const curve = PlotCurve::addTo(&bare);
    std::mt19937 random(1);
    std::uniform_int_distribution<int> heights(-1000, 1000);
    for (int i = 0; i < 5000; ++i) {
        curve->dropBefore(i - i % 1700);
        const int height = heights(random);
        curve->append(i, height == 0 ? qQNaN() : height);
        if (i % 7 == 0) {
            bool found[2];
            const QCPRange range = curve->getValueRange(found[0], QCP::sdBoth, QCPRange());
            const QCPRange expected = curve->data()->valueRange(found[1]);
            QCOMPARE(found[0], found[1]);
            QCOMPARE(range.lower, expected.lower);
            QCOMPARE(range.upper, expected.upper);
        }
    }
}

NORVO_TEST(tst_DenseGraph)
#include "tst_DenseGraph.moc"
