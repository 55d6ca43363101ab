// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "ArrayColumn.h"
#include "TestMain.h"
#include "widgets/PlotCurve.h"

#include <QtTest>

namespace plot = norvo::plot;

/// What holds with the second generation of the plot library alone. All that asks for its calls
/// is here, and in the test of its ticker; the other tests of graphs say rules that hold with both.
class tst_PlotSecondGeneration : public QObject
{
    Q_OBJECT

private slots:
    void noOtherTestOfGraphsAsksForItsCalls();
    void timeAxisShowsLocalTimeInTheFormat();
    void manyTicksOfATurnAreDrawnOnce();
    void sortedDataIsTakenAsItIs();
    void curveFindsItsRangeAsTheLibraryDoes_data();
    void curveFindsItsRangeAsTheLibraryDoes();
};

void tst_PlotSecondGeneration::noOtherTestOfGraphsAsksForItsCalls()
{
    const QRegularExpression itsCalls(
        "\\b(rp(Queued|Refresh)\\w+|rpImmediateRefresh|QCPAxisTicker\\w*|ticker|setTicker|"
        "QCPGraphData\\w*|QCPDataContainer|QCPDataRange|QCPDataSelection|dataCount|data\\(\\)->(at|"
        "add|set|removeBefore|constEnd|constBegin)|setAdaptiveSampling|setOpenGl|setSelectable|"
        "setBufferDevicePixelRatio|QCPVector2D|setData\\([^)]*true\\)|range\\(\\), QCPRange)\\b");
    const QStringList itsTests{"tst_PlotSecondGeneration.cpp", "tst_TimeLabels.cpp"};
    int files = 0;
    for (const char* folder : {"/tests/widgets/", "/tests/plugin/"}) {
        const QDir tests(QString(NORVO_SOURCE_DIR) + folder);
        for (const QString& name : tests.entryList({"*.h", "*.cpp"})) {
            QFile file(tests.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            if (text.contains("qcustomplot.h") || text.contains("CurvePoints.h") ||
                text.contains("GraphParts.h") || text.contains("PlotView.h")) {
                ++files;
                const QRegularExpressionMatch match = itsCalls.match(text);
                QVERIFY2(match.hasMatch() == itsTests.contains(name),
                         qPrintable(name + ": " + match.captured()));
            }
        }
    }
    QVERIFY(files >= 10);
}

void tst_PlotSecondGeneration::timeAxisShowsLocalTimeInTheFormat()
{
    TimeGraph stand({{"widget/timeFormat", "HH'h'mm.ss"}, {"widget/timePeriod", "20"}});
    const auto ticker = stand.plot()->xAxis->ticker().dynamicCast<QCPAxisTickerDateTime>();
    QVERIFY(ticker);
    QCOMPARE(ticker->dateTimeFormat(), QString("HH'h'mm.ss"));
    QCOMPARE(ticker->dateTimeSpec(), Qt::LocalTime);
    TimeGraph plain;
    QCOMPARE(plain.plot()->xAxis->ticker().dynamicCast<QCPAxisTickerDateTime>()->dateTimeFormat(),
             QString("hh:mm:ss"));
}

void tst_PlotSecondGeneration::manyTicksOfATurnAreDrawnOnce()
{
    TimeGraph stand({{"widget/timePeriod", "1000000"}});
    QVERIFY(stand.show());
    QCoreApplication::processEvents();
    QSignalSpy drawn(stand.plot(), SIGNAL(afterReplot()));
    for (int i = 0; i < 10; ++i) {
        stand.refresh();
    }
    QCOMPARE(drawn.size(), 0);
    QTRY_COMPARE(drawn.size(), 1);
    QTest::qWait(20);
    QCOMPARE(drawn.size(), 1);
}

void tst_PlotSecondGeneration::sortedDataIsTakenAsItIs()
{
    QCustomPlot bare;
    auto* const graph = new plot::Graph(bare.xAxis, bare.yAxis);
    plot::setSortedData(graph, {1, 2}, {10, 20});
    plot::setSortedData(graph, {3}, {30});
    QCOMPARE(pointsOf(graph), QString("(3, 30)"));
}

void tst_PlotSecondGeneration::curveFindsItsRangeAsTheLibraryDoes_data()
{
    QTest::addColumn<ArrayColumn>("array");
    const double nan = qQNaN();
    QTest::newRow("none") << ArrayColumn{QVector<double>{}};
    QTest::newRow("one") << ArrayColumn{QVector<double>{-3}};
    QTest::newRow("three") << ArrayColumn{QVector<double>{2, 3, 1}};
    QTest::newRow("four") << ArrayColumn{QVector<double>{4, 2, 3, 1}};
    QTest::newRow("lowest and highest in each place")
        << ArrayColumn{QVector<double>{5, 1, 5, 5, 5, 5, 9, 5, 5}};
    QTest::newRow("lowest last") << ArrayColumn{QVector<double>{5, 4, 3, 2, 1, 0}};
    QTest::newRow("negative") << ArrayColumn{QVector<double>{-5, -4, -3, -2, -1}};
    QTest::newRow("nan among them") << ArrayColumn{QVector<double>{nan, 2, nan, 3, nan, nan}};
    QTest::newRow("nothing but nan") << ArrayColumn{QVector<double>{nan, nan, nan, nan, nan}};
    QTest::newRow("infinities") << ArrayColumn{QVector<double>{1, qInf(), -qInf(), 2, 3}};
    QTest::newRow("one infinity alone") << ArrayColumn{QVector<double>{qInf()}};
    QTest::newRow("largest") << ArrayColumn{QVector<double>{1.7e308, -1.7e308}};
}

void tst_PlotSecondGeneration::curveFindsItsRangeAsTheLibraryDoes()
{
    QFETCH(ArrayColumn, array);
    const QVector<double> values = array.values;
    QCustomPlot bare;
    const QVector<QCPGraph*> curves{bare.addGraph(), PlotCurve::addTo(&bare)};
    QCOMPARE(bare.graphCount(), 2);
    QCOMPARE(bare.graph(1), curves[1]);
    QCOMPARE(bare.legend->itemCount(), 2);
    for (QCPGraph* curve : curves) {
        for (int i = 0; i < values.size(); ++i) {
            curve->addData(i, values[i]);
        }
    }
    for (QCP::SignDomain domain : {QCP::sdBoth, QCP::sdNegative, QCP::sdPositive}) {
        for (const QCPRange& keys : {QCPRange(), QCPRange(1, 2)}) {
            bool found[2];
            const QCPRange expected = curves[0]->getValueRange(found[0], domain, keys);
            const QCPRange range = curves[1]->getValueRange(found[1], domain, keys);
            QCOMPARE(found[1], found[0]);
            if (found[0]) {
                QCOMPARE(range.lower, expected.lower);
                QCOMPARE(range.upper, expected.upper);
            }
        }
    }
}

NORVO_TEST(tst_PlotSecondGeneration)
#include "tst_PlotSecondGeneration.moc"
