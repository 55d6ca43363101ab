// SPDX-License-Identifier: GPL-3.0-or-later

#include "StartedPanel.h"
#include "StoredHistory.h"
#include "TestMain.h"

#include <QTemporaryDir>
#include <QtTest>
#include <qcustomplot.h>

using namespace norvo;

namespace {

/// A graph whose first two senders, and the source of the third, are recorded.
const QByteArray kDevices("devices:\n"
                          "  one: {device: graph_settings, params: {name: One}}\n"
                          "  two: {device: graph_settings, params: {name: Two}}\n"
                          "  raw: {device: graph_settings}\n"
                          "  relay: {device: graph_settings, params: {name: Pump, color: blue, "
                          "fill: true}}\n"
                          "  graph: {device: output_graph, params: {widget/timePeriod: 60, "
                          "widget/timeout: %}}\n"
                          "connections:\n"
                          "  - one.output -> graph.input\n"
                          "  - two.output -> graph.input\n"
                          "  - raw.output -> relay.input\n"
                          "  - relay.output -> graph.input\n");
const QByteArray kRelaySettings("  - relay.setName -> graph.setName\n"
                                "  - relay.setColor -> graph.setColor\n"
                                "  - relay.setFilled -> graph.setFilled\n");

/// Started with what `rows` say: a signal's number and seconds before now, its value.
class Remembering : public QTemporaryDir, public StartedPanel
{
public:
    struct Row
    {
        int signal;
        double age;
        double value;
    };

    explicit Remembering(const QVector<Row>& rows, const QByteArray& timeout = "1",
                         const QByteArray& settings = "",
                         const QByteArray& connections = kRelaySettings)
        : StartedPanel("history: {file: " + stored(filePath("h.sqlite"), rows) +
                       ", signals: {one.output: " + settings + ", two.output: , raw.output: }}\n" +
                       QByteArray(kDevices).replace("%", timeout) + connections)
    {}

    QCustomPlot& plot() { return *part<QCustomPlot>("graph"); }
    /// The values of a piece of a curve.
    QStringList values(int piece)
    {
        QStringList texts;
        for (const auto& point : *plot().graph(piece)->data()) {
            texts.append(QString::number(point.value));
        }
        return texts;
    }

private:
    static QByteArray stored(const QString& file, const QVector<Row>& rows)
    {
        const qint64 now = QDateTime::currentMSecsSinceEpoch();
        QVector<HistoryRow> stored;
        for (const Row& row : rows) {
            stored.append(
                {row.signal, {now - qint64(row.age * 1000), HistoryValue::of(row.value)}});
        }
        if (!storeHistory(file, {"one.output", "two.output", "raw.output"}, stored)) {
            qFatal("no history");
        }
        return file.toUtf8();
    }
};

} // namespace

/// Graphs of the plug-in, filled from the history.
class tst_RememberingGraph : public QObject
{
    Q_OBJECT

private slots:
    void curveBeginsWithWhatWasRecorded();
    void nothingIsShownBeforeTheFirstValue();
    void whatIsOlderThanTheWindowIsLeftOut();
    void pauseBreaksTheCurveAsEver();
    void timeThatThePanelWasOffIsAGap();
    void valuesThatWereLeftOutBreakNothing();
    void curvesComeInTheOrderOfTheirFirstValues();
    void curveOfARelayIsThatOfItsSource();
    void graphWhoseWidgetBeginsAnewIsFilledOnceMore();
    void windowOfManyValuesIsFilledSoon();
};

void tst_RememberingGraph::curveBeginsWithWhatWasRecorded()
{
    Remembering panel({{0, 20, 1}, {0, 19.5, 2}, {0, 19, 3}}, "1", "", "");
    panel.send("one", 7);
    QCOMPARE(panel.plot().graphCount(), 2);
    QCOMPARE(panel.values(0), QStringList({"1", "2", "3"}));
    QCOMPARE(panel.values(1), QStringList("7"));
    QCOMPARE(panel.plot().graph(1)->name(), QString("one"));
    QCOMPARE(panel.plot().legend->itemCount(), 1);
    QVERIFY(!panel.plot().legend->visible());
    QCOMPARE(panel.plot().graph(0)->pen().color(), QColor(250, 140, 0));
    QCOMPARE(panel.plot().graph(1)->pen().color(), QColor(250, 140, 0));
    panel.send("one", 8);
    QCOMPARE(panel.values(1), QStringList({"7", "8"}));
    QCOMPARE(panel.values(0), QStringList({"1", "2", "3"}));
}

void tst_RememberingGraph::nothingIsShownBeforeTheFirstValue()
{
    Remembering panel({{0, 20, 1}});
    QTest::qWait(200);
    QCOMPARE(panel.plot().graphCount(), 1); // The relay's, which has been told its look.
    QCOMPARE(panel.values(0), QStringList());
}

void tst_RememberingGraph::whatIsOlderThanTheWindowIsLeftOut()
{
    Remembering panel({{0, 100, 1}, {0, 62, 2}, {0, 30, 3}, {0, 29.5, 4}});
    panel.send("one", 7);
    QCOMPARE(panel.values(1), QStringList({"3", "4"}));
    QCOMPARE(panel.values(2), QStringList("7"));
}

void tst_RememberingGraph::pauseBreaksTheCurveAsEver()
{
    Remembering panel({{0, 30, 1}, {0, 29, 2}, {0, 20, 3}, {0, 19, 4}});
    panel.send("one", 7);
    QCOMPARE(panel.values(1), QStringList({"1", "2"}));
    QCOMPARE(panel.values(2), QStringList({"3", "4"}));
    QCOMPARE(panel.values(3), QStringList("7"));
}

void tst_RememberingGraph::timeThatThePanelWasOffIsAGap()
{
    // The last run has ended with the last of these, and the graph bridges an hour.
    const double nan = qQNaN();
    Remembering panel({{0, 30, 1}, {0, 29, nan}, {0, 20, 3}}, "3600");
    panel.send("one", 7);
    QCOMPARE(panel.values(1), QStringList({"1", "nan", "3", "7"}));
}

void tst_RememberingGraph::valuesThatWereLeftOutBreakNothing()
{
    Remembering panel({{0, 30, 1}, {0, 20, 1}, {0, 19.9, 5}}, "1", "{deadband: 0.5}");
    panel.send("one", 7);
    const QStringList values = panel.values(1);
    QVERIFY2(values.size() > 10 && values.size() < 50, qPrintable(values.join(' ')));
    QCOMPARE(values.count("1"), values.size() - 1);
    QCOMPARE(values.constLast(), QString("5"));
    QCOMPARE(panel.plot().graphCount(), 3);
}

void tst_RememberingGraph::curvesComeInTheOrderOfTheirFirstValues()
{
    Remembering panel({{0, 20, 1}, {1, 10, 2}});
    panel.send("two", 7);
    panel.send("one", 8);
    // The relay's curve is the first: it has been told its look at the start.
    QCOMPARE(panel.values(1), QStringList("2"));
    QCOMPARE(panel.values(2), QStringList("7"));
    QCOMPARE(panel.values(3), QStringList("1"));
    QCOMPARE(panel.plot().graph(2)->pen().color(), QColor(Qt::green));
    QCOMPARE(panel.plot().graph(4)->pen().color(), QColor(Qt::blue));
    QCOMPARE(panel.plot().legend->itemCount(), 3);
}

void tst_RememberingGraph::curveOfARelayIsThatOfItsSource()
{
    Remembering panel({{2, 20, 1}, {2, 10, 2}});
    QTRY_COMPARE(panel.plot().graph(0)->name(), QString("Pump"));
    panel.send("raw", 7);
    QCOMPARE(panel.plot().graphCount(), 3);
    QCOMPARE(panel.values(0), QStringList("1"));
    QCOMPARE(panel.values(1), QStringList("2"));
    QCOMPARE(panel.values(2), QStringList("7"));
    QCOMPARE(panel.plot().graph(2)->name(), QString("Pump"));
    QCOMPARE(panel.plot().graph(2)->pen().color(), QColor("blue"));
    QTRY_COMPARE(panel.plot().graph(2)->brush().color().alpha(), 128);
    QCOMPARE(panel.plot().graph(1)->brush().color().alpha(), 128);
}

void tst_RememberingGraph::graphWhoseWidgetBeginsAnewIsFilledOnceMore()
{
    Remembering panel({{0, 20, 1}}, "1", "", "");
    panel.send("one", 7);
    panel.send("one", 8);
    BaseWidget& widget = *panel.panel.panel().widget("graph");
    widget.deinitialise();
    widget.initialise();
    QTest::qWait(10); // The record's clock and the graph's may differ by a millisecond or two.
    panel.panel.graphMemory()->fill("graph");
    panel.send("one", 9);
    const auto plots = widget.findChildren<QCustomPlot*>();
    QCOMPARE(plots.size(), 2);
    QStringList values;
    for (int i = 0; i < plots.last()->graphCount(); ++i) {
        for (const auto& point : *plots.last()->graph(i)->data()) {
            values.append(QString::number(point.value));
        }
    }
    QCOMPARE(values.join(" "), QString("1 7 8 9"));
}

void tst_RememberingGraph::windowOfManyValuesIsFilledSoon()
{
    QVector<Remembering::Row> rows;
    for (int i = 5500; i > 0; --i) {
        rows.append({0, i * 0.01, double(i % 7)});
    }
    Remembering panel(rows);
    QElapsedTimer timer;
    timer.start();
    panel.send("one", 7);
    qInfo("5,500 values: %lld ms", timer.elapsed());
    QVERIFY(panel.plot().graph(1)->data()->size() > 5000);
    QVERIFY(timer.elapsed() < 2000); // A tenth of it where nobody else wants the processor.
}

NORVO_TEST(tst_RememberingGraph)

#include "tst_RememberingGraph.moc"
