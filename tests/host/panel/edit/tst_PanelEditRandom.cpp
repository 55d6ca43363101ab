// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomPanelEdits.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/EditHistory.h"
#include "host/panel/file/PanelFile.h"
#include "Seed.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Cells;
using norvo::CellsById;
using norvo::YamlEdit;
namespace DeviceEdit = norvo::DeviceEdit;

namespace {

constexpr int kEdits = 5000;
constexpr int kStepsOfAFile = 25;

QString shown(const norvo::PlacedText& one)
{
    return QString("%1:%2 %3").arg(one.place.line).arg(one.place.column).arg(one.text);
}

/// What the reader of panels makes of a text that it has the tree of, places and problems included.
QStringList readingOf(const YamlEdit& text)
{
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto panel = norvo::PanelFile::parse(text, "panel.yaml", diagnostics);
    QStringList lines{shown(panel.title)};
    for (const auto& device : panel.devices) {
        lines += shown(device.id) + " is " + shown(device.type);
        for (const auto& param : device.params) {
            lines += shown(param.name) + " = " + shown(param.value);
        }
    }
    for (const auto& connection : panel.connections) {
        lines += shown(connection.from.method) + shown(connection.to.method);
    }
    for (const norvo::Diagnostic& one : diagnostics.sorted()) {
        lines += one.toString();
    }
    return lines;
}

} // namespace

/// Random edits of real panels and odd ones: each text can be read, means what the edit said, and
/// is found again by undo and redo.
class tst_PanelEditRandom : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eachEditDoesWhatItSaysAndIsUndone();
    void movedWidgetChangesOneLine();

private:
    QString step(YamlEdit& edit);

    RandomPanelEdits m_random;
    QList<QByteArray> m_panels;
    norvo::EditHistory m_history;
    QList<QByteArray> m_texts; ///< The first, and behind each step.
    int m_done = 0;
    int m_refused = 0;
};

void tst_PanelEditRandom::initTestCase()
{
    for (const char* name : {"hello", "bench", "workstation", "robot", "gallery"}) {
        QFile file(QString("examples/%1/panel.yaml").arg(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_panels += file.readAll();
    }
    m_panels += QByteArray(m_panels[1]).replace("\n", "\r\n");
    m_panels += "\xef\xbb\xbf" + m_panels[3].trimmed();
    m_panels += "";
    m_panels += "# Mine.\ntitle: Mine";
    m_panels += "{\n  \"title\": \"JSON\",\n  \"devices\": {\n    \"a\": {\"device\": \"x\", "
                "\"params\": {\"text\": \"A\"}},\n    \"b\": {\"device\": \"x\"}\n  },\n"
                "  \"connections\": [\n    \"a.o -> b.i\",\n    \"b.o -> a.i\"\n  ]\n}\n";
    m_panels += "connections:\n- a.o -> b.i\n- b.o->a.i # Back.\ndevices:\n    a:\n"
                "        device: x\n        params:\n            widget/row: 1\n\n"
                "            widget/area: Run\n    # B.\n    b: {device: y, params: {}}\n"
                "    c: {device: y, outputs: {o: '^o'}, params: {widget: {area: Stop}}}\n"
                "alarms: [{signal: c.o, above: 1}, {signal: a.o, above: 2}]\n"
                "history: {signals: {a.o: , c.o(double): {every: 1 s}}}\nrows: {Run: [1, 2]}\n";
    m_panels += "{devices: {a: {device: x}, b: {device: x, params: {widget: {row: 2}}}}}\n";
}

/// One edit, or some steps back and forth; what went wrong, empty where nothing did.
QString tst_PanelEditRandom::step(YamlEdit& edit)
{
    const QByteArray before = edit.text();
    EditedModel expected = EditedModel::read(before);
    const bool wasEmpty = !expected.errors.isEmpty();
    QString what;
    const YamlEdit::Error error = m_random.editAny(edit, expected, what);
    expected.errors.clear();
    if (error) {
        ++m_refused;
        const bool isSound = edit.text() == before && !error->text.startsWith("WRONG");
        return isSound ? QString() : what + ": " + error->text + "\n" + edit.text();
    }
    ++m_done;
    const QStringList now = EditedModel::read(edit.text()).lines();
    if (now != expected.lines() && !(wasEmpty && edit.text() == before)) {
        return what + " makes\n" + edit.text() + "\nwhich says\n" + now.join('\n') + "\nand not\n" +
               expected.lines().join('\n');
    }
    if (readingOf(edit) != readingOf(YamlEdit(edit.text()))) {
        return what + " makes a text that reads otherwise than its tree\n" + edit.text();
    }
    if (edit.text() != before) {
        m_history.add(what, before, edit.text());
        m_texts += edit.text();
    }
    QByteArray text = edit.text();
    const int back = m_random.pick(5) == 0 ? m_random.pick(m_texts.size()) : 0;
    for (int i = 1; i <= back; ++i) {
        text = m_history.undo(text);
        if (text != m_texts[m_texts.size() - 1 - i]) {
            return "undo is not what was there before " + what;
        }
    }
    for (int i = 0; i < back; ++i) {
        text = m_history.redo(text);
    }
    return text == edit.text() ? QString() : "redo is not what was there after " + what;
}

void tst_PanelEditRandom::eachEditDoesWhatItSaysAndIsUndone()
{
    const unsigned first = norvo::testSeed();
    qInfo("NORVO_TEST_SEED=%u", first);
    for (unsigned round = 0; round < kEdits / kStepsOfAFile; ++round) {
        m_random.seed(first + round);
        YamlEdit edit(m_panels[int(round) % m_panels.size()]);
        QVERIFY(!edit.error());
        m_history = {};
        m_texts = {edit.text()};
        for (int i = 0; i < kStepsOfAFile; ++i) {
            const QByteArray before = edit.text();
            const QString wrong = step(edit);
            QVERIFY2(wrong.isEmpty(), qPrintable(QString("NORVO_TEST_SEED=%1, step %2: %3\nof\n%4")
                                                     .arg(first + round)
                                                     .arg(i)
                                                     .arg(wrong, QString::fromUtf8(before))));
        }
    }
    qInfo("%d edits done, %d refused", m_done, m_refused);
    QVERIFY(m_done > kEdits * 9 / 10);
}

void tst_PanelEditRandom::movedWidgetChangesOneLine()
{
    int moved = 0;
    for (const QByteArray& panel : qAsConst(m_panels)) {
        const CellsById cells = cellsOf(YamlEdit(panel));
        const EditedModel model = EditedModel::read(panel);
        for (const QString& id : model.ids) {
            if (!model.devices[id].params.contains("widget/row")) {
                continue;
            }
            YamlEdit edit(panel);
            Cells there = cells[id];
            there.row += 7;
            if (!model.devices[id].params.contains("widget/column")) {
                there.column = -1;
            }
            QVERIFY(!DeviceEdit::place(edit, id, there));
            const QList<QByteArray> before = panel.split('\n');
            const QList<QByteArray> after = edit.text().split('\n');
            QCOMPARE(after.size(), before.size());
            int changes = 0;
            for (int i = 0; i < before.size(); ++i) {
                changes += before[i] == after[i] ? 0 : 1;
            }
            QCOMPARE(changes, 1);
            ++moved;
        }
    }
    QVERIFY(moved > 50);
}

NORVO_GUILESS_TEST(tst_PanelEditRandom)
#include "tst_PanelEditRandom.moc"
