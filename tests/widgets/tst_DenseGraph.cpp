// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"
#include "TestMain.h"

#include <QtTest>

#include <random>

/// The range of a curve's values as its points come and go. The class exists with the second
/// generation of the plot library alone.
class tst_DenseGraph : public QObject
{
    Q_OBJECT

private slots:
    void pointsPutInFromOutsideAreSeen();
    void rangeFollowsWhatComesAndGoes();
};

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
        curve->dropBefore(i % 1700 == 0 ? i : i - 1000);
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
