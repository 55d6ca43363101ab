// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "ToolPanel.h"

#include "../../program/StoredHistory.h"
#include "host/plots/SeenPoints.h"

#include <cmath>

namespace {

const QString kReading("reading earlier values");
const QString kBeginning("beginning of the record");
const QString kUnreadable("the history cannot be read");

/// What one.output (0) and raw.output (1) sent so many seconds ago.
struct Row
{
    int signal;
    double age;
    double value;
};

QVector<Row> each(int signal, int from, int to)
{
    QVector<Row> rows;
    for (int age = from; age > to; --age) {
        rows.append({signal, double(age), double(age)});
    }
    return rows;
}

/// The time that all ages are counted from, before anything else is made.
struct Start
{
    const qint64 start = QDateTime::currentMSecsSinceEpoch();
    double timeOf(double age) const { return double(start) * 0.001 - age; }
};

/// A graph of 20 s, whose curves "one" and "Pump" are recorded and "new" is not.
class RecordedGraph : public Start, public QTemporaryDir, public ToolPanel
{
public:
    explicit RecordedGraph(const QVector<Row>& rows, const QByteArray& settings = "",
                           const QByteArray& relayName = "Pump")
        : ToolPanel(
              "history: {file: " + stored(filePath("h.sqlite"), rows) +
              ", signals: {one.output: " + settings +
              ", raw.output: }}\n"
              "devices:\n"
              "  one: {device: graph_settings}\n"
              "  new: {device: graph_settings}\n"
              "  raw: {device: graph_settings}\n"
              "  relay: {device: graph_settings, params: {name: " +
              relayName +
              "}}\n"
              "  trend: {device: output_graph, params: {widget: {row: 0, timePeriod: 20, timeout: "
              "6}}}\n"
              "  other: {device: output_graph, params: {widget: {row: 1, timePeriod: 20}}}\n"
              "connections:\n"
              "  - one.output -> trend.input\n"
              "  - new.output -> other.input\n"
              "  - raw.output -> relay.input\n"
              "  - relay.output -> trend.input\n"
              "  - relay.setName -> trend.setName\n")
    {}

    /// Opened, with the window that its own values and the history fill, and stopped.
    void openHeld(const QString& sender = "one", const QString& graph = "trend")
    {
        QMetaObject::invokeMethod(running->panel().device(sender), "input", Q_ARG(double, 7));
        open(graph);
        waitForFrames(2, graph);
        QTest::keyClick(&copy(graph), Qt::Key_Space);
    }
    void back(const QString& graph = "trend") { QTest::keyClick(&copy(graph), Qt::Key_Left); }
    /// Until earlier values are asked for. On a slow machine the graph still has some that have
    /// left its window before.
    bool backToUnread()
    {
        for (int i = 0; i < 100 && !state().contains(kReading); ++i) {
            back();
        }
        return state().contains(kReading);
    }
    /// By a hand that waits for what is read, until this age is in the middle.
    void backTo(double age)
    {
        const double key = timeOf(age);
        for (int i = 0; i < 2000 && copy().xAxis->range().center() > key; ++i) {
            back();
            QTest::qWait(5);
        }
    }
    double valueAt(const QString& curve, double age)
    {
        const auto values = norvo::valuesAt(copy(), timeOf(age));
        for (const norvo::CurveValue& value : values) {
            if (value.curve == curve) {
                return value.value;
            }
        }
        return -1;
    }

private:
    QByteArray stored(const QString& file, const QVector<Row>& rows) const
    {
        QVector<norvo::HistoryRow> stored;
        for (const Row& row : rows) {
            stored.append(
                {row.signal, {start - qint64(row.age * 1000), norvo::HistoryValue::of(row.value)}});
        }
        if (!storeHistory(file, {"one.output", "raw.output"}, stored)) {
            qFatal("no history");
        }
        return file.toUtf8();
    }
};

} // namespace

/// The tools of graphs whose values are recorded: what was before their window.
class tst_GraphHistory : public QObject
{
    Q_OBJECT

private slots:
    void heldGraphScrollsBackIntoTheHistory();
    void curveIsReadUnderItsNameInTheLegend();
    void zoomingOutReadsTheHistory();
    void gapOfTheHistoryIsAGap();
    void pointIsReadOnce();
    void beginOfTheRecordIsSaid();
    void liveForgetsWhatWasRead();
    void liveWhileReadingStaysLive();
    void graphWithoutHistoryEndsAtItsWindow();
    void curvesOfOneNameAreNotRead();
    void stoppedHistoryIsNotWaitedFor();
    void unreadableHistoryIsNotWaitedFor();
};

void tst_GraphHistory::heldGraphScrollsBackIntoTheHistory()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld();
    const QCPRange held = panel.copy().xAxis->range();
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
    QVERIFY(panel.copy().xAxis->range().lower <= held.lower); // It waits, and does not block.
    QTRY_VERIFY(!panel.state().contains(kReading));
    QVERIFY(panel.copy().xAxis->range().lower < held.lower);
    panel.backTo(100);
    QVERIFY(panel.state().startsWith("Not live"));
    QCOMPARE(panel.valueAt("one", 100), 100.0);
    QCOMPARE(panel.valueAt("one", 95), 95.0);
    QCOMPARE(panel.copy().graphCount(), panel.plot()->graphCount());
    const QList<QByteArray> lines = norvo::tableOf(panel.copy()).split('\n');
    int count = 0; // Once each, one a second.
    for (const QByteArray& line : lines) {
        count += line.contains(",\"one\",");
    }
    QVERIFY2(count >= 19 && count <= 21, qPrintable(QString::number(count)));
    // The device's own picture goes on.
    QVERIFY(panel.plot()->xAxis->range().lower > held.lower);
    QVERIFY(panel.plot()->graph(1)->data()->size() < 25);
}

void tst_GraphHistory::curveIsReadUnderItsNameInTheLegend()
{
    RecordedGraph panel(each(0, 100, 0) + each(1, 100, 0));
    panel.openHeld("raw");
    panel.backTo(50);
    QCOMPARE(panel.valueAt("Pump", 50), 50.0);
    QCOMPARE(panel.valueAt("one", 50), -1.0); // Not in the graph so far.
}

void tst_GraphHistory::zoomingOutReadsTheHistory()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld();
    const double least = panel.timeOf(150);
    for (int i = 0; i < 2000 && panel.copy().xAxis->range().lower > least; ++i) {
        QTest::keyClick(&panel.copy(), Qt::Key_Minus);
        QTest::qWait(5);
    }
    QVERIFY(panel.copy().xAxis->range().lower <= least);
    QCOMPARE(panel.valueAt("one", 140), 140.0);
}

void tst_GraphHistory::gapOfTheHistoryIsAGap()
{
    // Nothing for ten seconds, longer than the time-out; and within it, a time without the panel.
    RecordedGraph panel(each(0, 120, 70) + each(0, 60, 45) +
                        QVector<Row>{{0, 44.5, qQNaN()}, {0, 42.5, 42.5}} + each(0, 42, 0));
    panel.openHeld();
    panel.backTo(65);
    QVERIFY(std::isnan(panel.valueAt("one", 66)));
    QCOMPARE(panel.valueAt("one", 75), 75.0);
    QTRY_VERIFY_WITH_TIMEOUT(!panel.state().contains(kReading), 20000);
    const QCPGraphDataContainer& points = *panel.copy().graph(1)->data();
    QVector<double> before; // Of each break.
    for (auto point = points.constBegin(); point != points.constEnd(); ++point) {
        if (point != points.constBegin() && std::isnan(point->value) &&
            !std::isnan((point - 1)->value)) {
            before.append((point - 1)->value);
        }
    }
    QCOMPARE(before, QVector<double>({71, 46}));
    QVERIFY(std::isnan(panel.valueAt("one", 42.7))); // Next to its end.
    QCOMPARE(panel.valueAt("one", 42.5), 42.5);
}

void tst_GraphHistory::pointIsReadOnce()
{
    // A sender that is quiet: its points have left the window, and the graph still has them.
    RecordedGraph panel(each(0, 100, 0));
    QMetaObject::invokeMethod(panel.running->panel().device("one"), "input", Q_ARG(double, 7));
    panel.open();
    const QCPGraphDataContainer& own = *panel.plot()->graph(1)->data();
    QTRY_VERIFY(own.constBegin()->key + 2 < panel.plot()->xAxis->range().lower);
    panel.waitForFrames(1);
    QTest::keyClick(&panel.copy(), Qt::Key_Space);
    panel.backTo(60);
    const QCPGraphDataContainer& points = *panel.copy().graph(1)->data();
    QVERIFY(points.size() > own.size());
    for (auto point = points.constBegin() + 1; point != points.constEnd(); ++point) {
        QVERIFY2(point->key > (point - 1)->key, qPrintable(QString::number(point->value)));
    }
}

void tst_GraphHistory::beginOfTheRecordIsSaid()
{
    RecordedGraph panel(each(0, 60, 0));
    panel.openHeld();
    QVERIFY(!panel.state().contains(kBeginning));
    for (int i = 0; i < 2000 && !panel.state().contains(kBeginning); ++i) {
        panel.back();
        QTest::qWait(5);
    }
    QVERIFY2(panel.state().contains(kBeginning), qPrintable(panel.state()));
    const QCPRange first = panel.copy().xAxis->range();
    QCOMPARE(first.lower, panel.copy().graph(1)->data()->constBegin()->key);
    QCOMPARE(panel.copy().graph(1)->data()->constBegin()->value, 60.0);
    panel.back();
    QVERIFY(!panel.state().contains(kReading));
    QCOMPARE(panel.copy().xAxis->range(), first);
    QTest::keyClick(&panel.copy(), Qt::Key_Right);
    QVERIFY(!panel.state().contains(kBeginning));
}

void tst_GraphHistory::liveForgetsWhatWasRead()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld();
    panel.backTo(60);
    QVERIFY(panel.copy().graph(1)->data()->size() > 40);
    QTest::keyClick(&panel.copy(), Qt::Key_Home);
    QCOMPARE(panel.state(), QString("Live"));
    QCOMPARE(panel.copy().graph(1)->data()->size(), panel.plot()->graph(1)->data()->size());
    QTest::keyClick(&panel.copy(), Qt::Key_Space);
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
}

void tst_GraphHistory::liveWhileReadingStaysLive()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld();
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
    QTest::keyClick(&panel.copy(), Qt::Key_Home);
    QTest::qWait(500);
    QCOMPARE(panel.state(), QString("Live"));
    QVERIFY(panel.copy().graph(1)->data()->size() < 25);
}

void tst_GraphHistory::graphWithoutHistoryEndsAtItsWindow()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld("new", "other");
    const QCPRange held = panel.copy("other").xAxis->range();
    panel.back("other");
    QTest::qWait(300);
    QCOMPARE(panel.copy("other").xAxis->range(), held);
    QVERIFY(!panel.state("other").contains(kReading));
    QVERIFY(!panel.state("other").contains(kBeginning));
}

void tst_GraphHistory::curvesOfOneNameAreNotRead()
{
    RecordedGraph panel(each(0, 200, 0) + each(1, 200, 0), "", "one");
    panel.openHeld();
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
    const QCPRange held = panel.copy().xAxis->range(); // The answer comes later, as any other.
    QTRY_VERIFY2(!panel.state().contains(kReading), qPrintable(panel.state()));
    QCOMPARE(panel.copy().xAxis->range(), held);
    QVERIFY(panel.copy().graph(1)->data()->size() < 25);
}

void tst_GraphHistory::stoppedHistoryIsNotWaitedFor()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld();
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
    panel.running->history()->stop(); // What was asked for before is read to the end.
    QTRY_VERIFY2(!panel.state().contains(kReading), qPrintable(panel.state()));
    QVERIFY(panel.copy().graph(1)->data()->size() > 25);
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
    QTRY_VERIFY2(!panel.state().contains(kReading), qPrintable(panel.state()));
    QVERIFY2(panel.state().contains(kUnreadable), qPrintable(panel.state()));
    QVERIFY(!panel.state().contains(kBeginning));
    QTest::keyClick(&panel.copy(), Qt::Key_Right);
    QVERIFY2(!panel.state().contains(kUnreadable), qPrintable(panel.state()));
}

void tst_GraphHistory::unreadableHistoryIsNotWaitedFor()
{
    RecordedGraph panel(each(0, 200, 0));
    panel.openHeld();
    for (const char* const end : {"", "-wal"}) {
        QFile file(panel.filePath("h.sqlite") + end);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.write(QByteArray(int(file.size()), 'x')) > 0);
    }
    QVERIFY2(panel.backToUnread(), qPrintable(panel.state()));
    const QCPRange held = panel.copy().xAxis->range();
    QTRY_VERIFY2(!panel.state().contains(kReading), qPrintable(panel.state()));
    QCOMPARE(panel.copy().xAxis->range(), held);
    QVERIFY2(panel.state().contains(kUnreadable), qPrintable(panel.state()));
    QVERIFY(!panel.state().contains(kBeginning));
    QTest::keyClick(&panel.copy(), Qt::Key_Home);
    QCOMPARE(panel.state(), QString("Live"));
}

NORVO_TEST(tst_GraphHistory)

#include "tst_GraphHistory.moc"
