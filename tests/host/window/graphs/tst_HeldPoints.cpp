// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "ToolPanel.h"
#include "host/plots/HeldPoints.h"

#include <memory>

namespace {

constexpr int kPointsOfARead = 300000;
const QCPRange kAll(-1e12, 1e12);
const QString kDropped("later values dropped until live");

/// The tools of a graph whose record has very many points and no beginning.
class DenseTools : public ToolPanel
{
public:
    DenseTools()
    {
        send("a", {{19, 1}, {10, 2}, {0, 3}});
        norvo::ToolSetting setting;
        setting.keySize = 40;
        setting.readEarlier = [this](double from, double to, QObject& receiver, auto done) {
            norvo::EarlierPoints earlier;
            earlier.curves = {{"a", {}, 1}};
            for (int i = 0; i < kPointsOfARead; ++i) {
                earlier.curves[0].points.append({from + (to - from) * i / kPointsOfARead, 5.0});
            }
            ++reads;
            QTimer::singleShot(0, &receiver, [done, earlier] { done(earlier); });
        };
        tools = std::make_unique<norvo::ToolPane>(*widget(), *plot(), setting);
        tools->show();
        waitForFrames(2);
        press(Qt::Key_Space);
    }

    norvo::PlotCopy& held() { return static_cast<norvo::PlotCopy&>(tools->plot()); }
    QString says() { return tools->findChild<QLabel*>("graphState")->text(); }
    void press(int key) { QTest::keyClick(&held(), Qt::Key(key)); }
    /// Until so many more reads have been answered.
    void backFor(int count)
    {
        const int last = reads + count;
        while (reads < last) {
            press(Qt::Key_Left);
            QTRY_VERIFY_WITH_TIMEOUT(!held().isReading(), 60000);
        }
    }
    QVector<double> keysIn(const QCPRange& range)
    {
        QVector<double> keys;
        for (int i = 0; i < held().graphCount(); ++i) {
            for (const QCPGraphData& point : *held().graph(i)->data()) {
                if (range.contains(point.key)) {
                    keys.append(point.key);
                }
            }
        }
        std::sort(keys.begin(), keys.end());
        return keys;
    }
    int count() { return keysIn(kAll).size(); }
    double newest() { return keysIn(kAll).constLast(); }

    int reads = 0;
    std::unique_ptr<norvo::ToolPane> tools;
};

} // namespace

/// What a stopped graph has read is bounded.
class tst_HeldPoints : public QObject
{
    Q_OBJECT

private slots:
    void newestAreDroppedAboveTheBound();
    void whatIsSeenStays();
    void endIsSaidInWords();
    void liveBringsAllBack();
    void neededPointsAreKeptAboveTheBound();
    void allCurvesEndTogether();
};

void tst_HeldPoints::newestAreDroppedAboveTheBound()
{
    DenseTools tools;
    const double newest = tools.newest();
    tools.backFor(3);
    QVERIFY(tools.count() > 3 * kPointsOfARead);
    QCOMPARE(tools.newest(), newest);
    tools.backFor(1);
    QCOMPARE(tools.count(), norvo::PlotCopy::kMaxPoints / 4 * 3);
    QVERIFY(tools.newest() < newest);
    tools.backFor(6);
    QVERIFY(tools.count() <= norvo::PlotCopy::kMaxPoints);
}

void tst_HeldPoints::whatIsSeenStays()
{
    DenseTools tools;
    tools.backFor(8);
    const QCPRange seen = tools.held().xAxis->range();
    QVERIFY(tools.newest() >= seen.upper);
    const QVector<double> keys = tools.keysIn(seen);
    QVERIFY(keys.size() > kPointsOfARead / 4);
    double last = seen.lower;
    for (const double key : keys) {
        QVERIFY2(key - last < 0.01, qPrintable(QString::number(key - seen.lower)));
        last = key;
    }
    QVERIFY(seen.upper - last < 0.01);
}

void tst_HeldPoints::endIsSaidInWords()
{
    DenseTools tools;
    tools.backFor(6);
    QVERIFY2(!tools.says().contains(kDropped), qPrintable(tools.says())); // Not there yet.
    for (int i = 0; i < 500 && !tools.says().contains(kDropped); ++i) {
        tools.press(Qt::Key_Right);
    }
    QVERIFY2(tools.says().startsWith("Not live") && tools.says().contains(kDropped),
             qPrintable(tools.says()));
    const QCPRange end = tools.held().xAxis->range();
    QVERIFY(end.upper >= tools.newest() && end.upper - tools.newest() < 0.01);
    tools.press(Qt::Key_Right);
    QCOMPARE(tools.held().xAxis->range(), end);
    tools.press(Qt::Key_Left);
    QVERIFY(!tools.says().contains(kDropped));
}

void tst_HeldPoints::liveBringsAllBack()
{
    DenseTools tools;
    tools.backFor(6);
    tools.press(Qt::Key_Home);
    QCOMPARE(tools.says(), QString("Live"));
    QCOMPARE(tools.count(), 3);
    QCOMPARE(tools.held().xAxis->range(), tools.plot()->xAxis->range());
    tools.press(Qt::Key_Space);
    tools.press(Qt::Key_Right);
    QVERIFY2(!tools.says().contains(kDropped), qPrintable(tools.says()));
}

void tst_HeldPoints::neededPointsAreKeptAboveTheBound()
{
    QCustomPlot plot;
    QCPGraph& curve = *plot.addGraph();
    for (int key = 0; key < 100; ++key) {
        curve.addData(key, 1);
    }
    QVERIFY(std::isinf(norvo::dropNewest(plot, 100, 0)));
    const double end = norvo::dropNewest(plot, 20, 60);
    QCOMPARE(end, 60.0);
    QCOMPARE(curve.data()->size(), 61);
    QCOMPARE(norvo::dropNewest(plot, 20, 2), 14.0);
    QCOMPARE(curve.data()->size(), 15);
}

void tst_HeldPoints::allCurvesEndTogether()
{
    QCustomPlot plot;
    plot.addGraph();
    plot.addGraph();
    for (int key = 0; key < 100; ++key) {
        plot.graph(0)->addData(key, 1);
        plot.graph(1)->addData(key + 50, 2);
    }
    norvo::dropNewest(plot, 100, 0);
    QCOMPARE(plot.graph(0)->data()->size(), 63);
    QCOMPARE(plot.graph(1)->data()->size(), 13);
}

NORVO_TEST(tst_HeldPoints)

#include "tst_HeldPoints.moc"
