// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomHand.h"

#include "host/panel/file/PanelFile.h"
#include "host/panel/run/PanelState.h"
#include "MessageLog.h"
#include "Seed.h"
#include "TestMain.h"

#include <QClipboard>
#include <QTabWidget>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kActions = 500; // All told; each takes several times as long.
#else
constexpr int kActions = 5000;
#endif
constexpr int kActionsOfAWalk = 250;
constexpr int kActionsBetweenStarts = 25;
constexpr QSize kPage(1000, 1200);

const QList<QByteArray> kPanels{
    // As a person writes it.
    "# The bench.\n"
    "title: Bench\n"
    "templates:\n"
    "  pair:\n"
    "    devices:\n"
    "      key: {device: button}\n"
    "      light: {device: indicator, params: {widget/column: 1}}\n"
    "    connections: [key.toggled -> light.input]\n"
    "devices:\n"
    "  go: # Starts.\n"
    "    device: button\n"
    "    params: {text: Go, widget: {row: 0, column: 0}}\n"
    "  wave: {device: generator, params: {interval: 3600000}}\n"
    "  target: {device: input, keep: send, params: {type: double, min: 0, max: 9}}\n"
    "  hot: {device: calc, inputs: {t: \"\"}, outputs: {double: t * 2}}\n"
    "  p1: {use: pair, at: {row: 4, column: 0}}\n"
    "  trend: {device: output_graph, params: {widget/area: Curves}}\n"
    "  curve: {device: graph_settings, params: {color: red}}\n"
    "  shown: {device: label}\n"
    "connections:\n"
    "  - go.toggled -> shown.inputWarning # Both.\n"
    "  - wave.output -> hot.t\n"
    "  - target.output(double) -> trend.input\n"
    "alarms:\n"
    "  - {signal: wave.output, above: 2, text: Too high}\n",
    // As a program does.
    "{\n  \"devices\": {\n"
    "    \"list\": {\"device\": \"dropdownlist\", \"params\": {\"options\": \"a|b\"}},\n"
    "    \"bar\": {\"device\": \"output_bar\"},\n"
    "    \"box\": {\"device\": \"checkbox\", \"keep\": \"false\"},\n"
    "    \"view\": {\"device\": \"picture\", \"params\": {\"widget/filename\": "
    "\":/icons/norvogui_expand\"}}\n"
    "  },\n  \"connections\": [\n    \"box.output(double) -> bar.input\"\n  ]\n}\n",
    "title: New\n",
    // With a document.
    "devices:\n"
    "  document:\n"
    "    device: qml_widget\n"
    "    params:\n"
    "      sourceType: parameter\n"
    "      sourceCode: |\n"
    "        import QtQuick 2.0\n"
    "        Item { signal output(real value); function input(value) {} }\n"
    "  level: {device: slider, params: {widget/row: 2, widget/column: 0}}\n"
    "  stop: {device: stop}\n"
    "connections: [level.output(double) -> document.input(double)]\n"
    "pages: [Main, More]\n"
    "rows: {Main: [1, 2]}\n"};

int actionsWanted()
{
    const int given = qEnvironmentVariableIntValue("NORVO_TEST_ACTIONS");
    return given > 0 ? given : kActions;
}

/// What Qt itself has to say, but of values and files; a device may warn of what it is told to do.
QString complaintOf(MessageLog& log)
{
    const QStringList messages = log.take();
    return messages
        .filter(QRegularExpression(
            "^(warning|critical): (?!QFSFileEngine|QString::arg)Q[A-Z]\\w*[:( ]"))
        .value(0);
}

/// Compares the live panel with one that starts with its text.
class Comparison
{
public:
    explicit Comparison(LiveEditor& editor)
    {
        editor.end();
        RunningFile fresh(editor.text(), LiveEditor::kWindow);
        const auto* const tabs = editor.pages().findChild<QTabWidget*>();
        if (auto* const own = fresh.running->pages().findChild<QTabWidget*>(); tabs && own) {
            own->setCurrentIndex(tabs->currentIndex());
        }
        const PanelState start = stateOf(fresh);
        const PanelState live = stateOf(editor.panel);
        difference = PanelState::difference(live, start);
        devices = live.devices();
        comparable = PanelState::comparable(live, start);
        editor.begin();
    }

    QString difference; ///< Empty: none.
    int devices;
    int comparable; ///< Of how many the places were compared.

private:
    static PanelState stateOf(const RunningFile& panel)
    {
        return PanelState::of(panel.running->panel(), panel.running->pages(), kPage,
                              PanelState::Params::AsWritten);
    }
};

/// What keeps the text from being read; empty: nothing.
QString faultOf(const QByteArray& text)
{
    norvo::Diagnostics diagnostics("panel.yaml");
    norvo::PanelFile::parse(text, "panel.yaml", diagnostics);
    return diagnostics.hasErrors() ? diagnostics.sorted().constFirst().toString() : QString();
}

} // namespace

/// Whatever is done in an editor, in whatever part of it, the file can be read, what runs is what a
/// start would run, and all is undone.
class tst_EditorWalk : public QObject
{
    Q_OBJECT

private slots:
    void anyWalkIsAStartAndIsUndone_data();
    void anyWalkIsAStartAndIsUndone();
    void cleanupTestCase();

private:
    int m_devices = 0;    ///< That were compared.
    int m_comparable = 0; ///< Of them, whose places were.
};

void tst_EditorWalk::anyWalkIsAStartAndIsUndone_data()
{
    QTest::addColumn<unsigned>("seed");
    for (int i = 0; i * kActionsOfAWalk < actionsWanted(); ++i) {
        QTest::addRow("walk %d", i + 1) << norvo::testSeed() * 100 + unsigned(i);
    }
}

void tst_EditorWalk::anyWalkIsAStartAndIsUndone()
{
    QFETCH(unsigned, seed);
    MessageLog log;
    QGuiApplication::clipboard()->clear(); // Of the walk before.
    const QByteArray first = kPanels[int(seed) % kPanels.size()];
    LiveEditor editor(first);
    RandomHand hand(editor, seed);
    QVERIFY(QTest::qWaitForWindowActive(&editor.window()));
    const bool isTold = qEnvironmentVariableIsSet("NORVO_TEST_TELL");
    QStringList done;
    const auto compare = [&] {
        const Comparison comparison(editor);
        m_devices += comparison.devices;
        m_comparable += comparison.comparable;
        return comparison.difference;
    };
    const auto tell = [&](const QString& fault) {
        const QByteArray text =
            QString("NORVO_TEST_SEED=%1, %2, action %3 (%4): %5\nof\n%6")
                .arg(norvo::testSeed())
                .arg(QTest::currentDataTag())
                .arg(done.size())
                .arg(done.mid(done.size() - 5).join("; "), fault, QString::fromUtf8(editor.text()))
                .toUtf8();
        fprintf(stderr, "%s\n", text.constData()); // More than a message of a test can hold.
        return text;
    };
    const int count = std::min(kActionsOfAWalk, actionsWanted());
    for (int i = 1; i <= count; ++i) {
        done += hand.act();
        if (isTold) {
            fprintf(stderr, "%d %s\n", i, qPrintable(done.last()));
        }
        QString fault = faultOf(editor.text());
        fault = fault.isEmpty() ? complaintOf(log) : fault;
        if (fault.isEmpty() && (i % kActionsBetweenStarts == 0 || i == count)) {
            fault = compare();
        }
        if (!fault.isEmpty()) {
            QFAIL(tell(fault));
        }
    }
    const QByteArray last = editor.text();
    while (editor.session.canRedo()) {
        QCOMPARE(editor.session.redo(), QString());
    }
    const QByteArray furthest = editor.text();
    int steps = 0;
    for (; editor.session.canUndo(); ++steps) {
        QCOMPARE(editor.session.undo(), QString());
    }
    QCOMPARE(editor.text(), first);
    QVERIFY(steps > 0);
    QString fault = compare();
    if (!fault.isEmpty()) {
        QFAIL(tell(fault));
    }
    while (editor.session.canRedo()) {
        QCOMPARE(editor.session.redo(), QString());
    }
    QCOMPARE(editor.text(), furthest);
    fault = compare();
    if (!fault.isEmpty()) {
        QFAIL(tell(fault));
    }
    fault = complaintOf(log);
    if (!fault.isEmpty()) {
        QFAIL(tell(fault));
    }
}

void tst_EditorWalk::cleanupTestCase()
{
    qInfo("the places of %d of %d devices were compared", m_comparable, m_devices);
    QVERIFY(m_comparable >= m_devices / 2);
    // The key that clears a line of text fades by an animation that nobody owns.
    QTest::qWait(400);
}

NORVO_TEST(tst_EditorWalk)
#include "tst_EditorWalk.moc"
