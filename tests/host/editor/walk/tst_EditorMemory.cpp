// SPDX-License-Identifier: GPL-3.0-or-later

#include "LiveEditor.h"

#include "host/editor/canvas/PageCover.h"
#include "host/editor/pages/PagesList.h"
#include "host/editor/palette/TypeList.h"
#include "host/panel/edit/ConnectionEdit.h"
#include "host/panel/plan/Node.h"
#include "host/panel/run/Panel.h"
#include "norvo/BaseDevice.h"
#include "Footprint.h"
#include "TestMain.h"

#include <QLineEdit>
#include <QTabWidget>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kEdits = 200;
#else
constexpr int kEdits = 1000;
#endif
/// What is left of an edit is how to undo it: its name, and the texts that it replaced.
constexpr size_t kMostBytesAnEdit = 1024;

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go, widget/row: 0}}\n"
                          "  shown: {device: label, params: {widget/row: 2}}\n"
                          "  level: {device: slider, params: {widget/row: 3}}\n"
                          "  trend: {device: output_graph, params: {widget/row: 4}}\n"
                          "connections:\n"
                          "  - level.output(double) -> trend.input\n";

} // namespace

/// What an editor that is worked with for long leaves behind, each step of it.
class tst_EditorMemory : public QObject
{
    Q_OBJECT

private slots:
    void editsLeaveNothingButTheirUndo();

private:
    void round(LiveEditor& editor) const;
    void arrange(LiveEditor& editor) const;
    void fillIn(LiveEditor& editor) const;
    void wire(LiveEditor& editor) const;
    void editPages(LiveEditor& editor) const;
};

/// All parts of the editor, once each; the file is as before then.
void tst_EditorMemory::round(LiveEditor& editor) const
{
    arrange(editor);
    fillIn(editor);
    wire(editor);
    editPages(editor);
    for (const char* name : {"undo", "undo", "redo", "redo"}) {
        LiveEditor::click(editor.key(name));
    }
}

void tst_EditorMemory::arrange(LiveEditor& editor) const
{
    editor.openPane("add");
    auto* const types = editor.shown<norvo::TypeList>();
    types->setCurrentRow(0);
    LiveEditor::settle();
    editor.openPane("device");
    editor.session.select({"go"});
    auto* const cover = editor.shown<norvo::PageCover>();
    QTest::keyClick(cover, Qt::Key_Right);
    QTest::keyClick(cover, Qt::Key_Left);
    QTest::keyClick(cover, Qt::Key_D, Qt::ControlModifier);
    QTest::keyClick(cover, Qt::Key_Delete);
    LiveEditor::settle();
}

void tst_EditorMemory::fillIn(LiveEditor& editor) const
{
    editor.session.select({"go"});
    LiveEditor::settle();
    for (const char* text : {"Start", "Go"}) {
        auto* const field = editor.shown<QLineEdit>("text");
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
        LiveEditor::settle();
    }
}

void tst_EditorMemory::wire(LiveEditor& editor) const
{
    editor.openPane("wires");
    namespace ConnectionEdit = norvo::ConnectionEdit;
    editor.session.change("Connect", [](norvo::YamlEdit& edit) {
        return ConnectionEdit::add(edit, "go.toggled", "shown.inputWarning");
    });
    LiveEditor::settle();
    editor.session.change("Disconnect",
                          [](norvo::YamlEdit& edit) { return ConnectionEdit::remove(edit, 1); });
    LiveEditor::settle();
}

void tst_EditorMemory::editPages(LiveEditor& editor) const
{
    editor.openPane("panel");
    auto* const list = editor.window().findChild<norvo::PagesList*>();
    for (QWidget* one = list; one; one = one->parentWidget()) {
        if (auto* const tabs = qobject_cast<QTabWidget*>(one)) {
            tabs->setCurrentWidget(list);
        }
    }
    LiveEditor::settle();
    LiveEditor::click(list->findChild<QPushButton*>("addPage"));
    LiveEditor::click(list->findChild<QPushButton*>("removePage"));
}

void tst_EditorMemory::editsLeaveNothingButTheirUndo()
{
    LiveEditor editor(kPanel);
    QVERIFY(QTest::qWaitForWindowActive(&editor.window()));
    int edits = 0;
    QObject::connect(&editor.session, &norvo::EditSession::changed, [&edits] { ++edits; });
    const auto editUntil = [&](int count) {
        while (edits < count) {
            const int before = edits;
            round(editor);
            QVERIFY(edits >= before + 10); // Not one of them was refused.
        }
        QTest::qWait(500); // What is being typed, and what fades.
        LiveEditor::settle();
    };
    const auto footprint = [&editor] {
        QObjectList roots{&editor.window(), &editor.session, &editor.file, &editor.panel.watch,
                          &editor.panel.running->panel()};
        for (const norvo::Node* const node : editor.panel.running->panel().nodes()) {
            roots += node->device();
        }
        return Footprint::of(roots);
    };
    editUntil(kEdits / 2);
    const QByteArray text = editor.text();
    const Footprint half = footprint();
    const int editsOfHalf = edits;
    editUntil(kEdits);
    QCOMPARE(editor.text(), text);
    QTRY_COMPARE_WITH_TIMEOUT(Footprint::difference(half, footprint()), QString(), 60000);
    const Footprint whole = footprint();
    QVERIFY(whole.total("objects") > 300 && whole.total("receivers") > 300);
    const size_t grown = whole.bytes() - std::min(whole.bytes(), half.bytes());
    const auto since = size_t(edits - editsOfHalf);
    qInfo("%d edits: %d objects, %d receivers, %d timers, %d handles, %d threads; the last %zu of "
          "them took %zu bytes",
          edits, whole.total("objects"), whole.total("receivers"), whole.total("timers"),
          whole.count("handles"), whole.count("threads"), since, grown);
    QVERIFY2(grown <= kMostBytesAnEdit * since, qPrintable(QString::number(grown)));
}

NORVO_TEST(tst_EditorMemory)
#include "tst_EditorMemory.moc"
