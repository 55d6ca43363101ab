// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/canvas/EditCanvas.h"
#include "host/editor/file/EditedFile.h"
#include "host/editor/form/DeviceForm.h"
#include "host/editor/frame/EditorBar.h"
#include "host/editor/frame/EditorFrame.h"
#include "host/editor/frame/PanelPane.h"
#include "host/editor/frame/SaveSheet.h"
#include "host/editor/frame/SidePane.h"

#include "host/editor/pages/PanelForm.h"
#include "host/editor/palette/TypePalette.h"
#include "host/editor/wiring/ConnectionTable.h"
#include "host/editor/wiring/WireCanvas.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/texts/Language.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using norvo::EditorFrame;
using norvo::YamlEdit;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}}\n"
                          "  lamp: {device: label}\n"
                          "connections:\n"
                          "  - go.toggled -> lamp.inputWarning\n";

} // namespace

class tst_EditorFrame : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void thePaneShowsWhatItsKeySays();
    void theKeyOfAnOpenPaneClosesIt();
    void aSelectionLeadsFromThePaletteToItsSettings();
    void whatHasNothingToBeSeenIsSaidToBeOnTheShelf();
    void wiringTakesThePlaceOfArranging();
    void aLineAndItsRowAreChosenTogether();
    void undoAndRedoFollowTheSession();
    void saveIsThereWhileSomethingIsUnsaved();
    void whatIsBeingTypedIsSaved();
    void whatIsBeingTypedIsAskedFor();
    void itCanEndWhileSomethingIsTyped();
    void theEndAsksWhereSomethingIsUnsaved();
    void theEndSavesWhereThatIsChosen();
    void theEndAsksNothingWhereAllIsSaved();
    void theWindowIsAsBeforeOnceItIsGone();
    void keysOfTheKeyboardWork();
    void aNewLanguageIsThatOfTheEditor();
    void openedAndClosedItLeavesNothing();
    void anEmptyPanelTakesItsFirstDevice();

private:
    QPushButton* key(const char* name) const
    {
        auto* const found = frame->bar().findChild<QPushButton*>(name);
        return found ? found : (qFatal("no key %s", name), nullptr);
    }
    void click(const char* name) const { QTest::mouseClick(key(name), Qt::LeftButton); }
    template <class T>
    T* shown() const
    {
        for (T* one : panel->window.template findChildren<T*>()) {
            if (one->isVisible()) {
                return one;
            }
        }
        return nullptr;
    }
    void typeText(const QString& text) const;
    void change(const QString& text) const
    {
        QCOMPARE(panel->session->change("Change the text",
                                        [&text](YamlEdit& edit) {
                                            return norvo::ParamEdit::setParam(edit, "go", "text",
                                                                              text);
                                        }),
                 QString());
    }
    template <class T>
    T* sheet() const
    {
        QApplication::processEvents();
        return panel->window.template findChild<T*>();
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<EditedPanel> panel;
    std::unique_ptr<norvo::EditedFile> file;
    std::unique_ptr<EditorFrame> frame;
};

void tst_EditorFrame::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QFile out(folder->filePath("panel.yaml"));
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(kPanel);
    out.close();
    panel = std::make_unique<EditedPanel>(kPanel, QSize(1024, 600));
    file = std::make_unique<norvo::EditedFile>(out.fileName(), *panel->session);
    frame = std::make_unique<EditorFrame>(*panel->session, *file, panel->window);
}

void tst_EditorFrame::cleanup()
{
    frame.reset();
    file.reset();
    panel.reset();
}

void tst_EditorFrame::thePaneShowsWhatItsKeySays()
{
    QVERIFY(shown<norvo::DeviceForm>());
    click("add");
    QVERIFY(shown<norvo::TypePalette>());
    QVERIFY(!shown<norvo::DeviceForm>());
    click("wires");
    QVERIFY(shown<norvo::ConnectionTable>());
    click("panel");
    QVERIFY(shown<norvo::PanelForm>());
    QVERIFY(!shown<norvo::ConnectionTable>());
    click("device");
    QVERIFY(!shown<norvo::PanelForm>());
    QVERIFY(key("device")->isChecked());
    QVERIFY(!key("wires")->isChecked());
}

void tst_EditorFrame::theKeyOfAnOpenPaneClosesIt()
{
    const int narrow = panel->pages().width();
    click("device");
    QVERIFY(!shown<norvo::SidePane>());
    QVERIFY(!key("device")->isChecked());
    QTRY_VERIFY_WITH_TIMEOUT(panel->pages().width() > narrow, 60000);
}

void tst_EditorFrame::aSelectionLeadsFromThePaletteToItsSettings()
{
    click("add");
    panel->session->select({"go"});
    QVERIFY(shown<norvo::DeviceForm>());
    QVERIFY(key("device")->isChecked());
}

void tst_EditorFrame::whatHasNothingToBeSeenIsSaidToBeOnTheShelf()
{
    const auto isSaid = [this] {
        const QList<QLabel*> labels = frame->bar().findChildren<QLabel*>();
        return std::any_of(labels.cbegin(), labels.cend(), [](const QLabel* label) {
            return label->text().contains("on the shelf");
        });
    };
    click("add");
    panel->session->select({"go"});
    QVERIFY(!isSaid());
    click("add");
    auto* const search = shown<norvo::TypePalette>()->findChild<QLineEdit*>("typeSearch");
    QTest::keyClicks(search, "generator");
    QTest::keyClick(search, Qt::Key_Return);
    QVERIFY(panel->session->document().text().contains("generator"));
    QVERIFY(isSaid());
    click("wires");
    QVERIFY(!isSaid());
}

void tst_EditorFrame::wiringTakesThePlaceOfArranging()
{
    const auto isArranging = [this] { return panel->window.findChild<norvo::EditCanvas*>(); };
    QVERIFY(isArranging());
    click("wires");
    QVERIFY(shown<norvo::WireCanvas>());
    QVERIFY(!isArranging());
    click("device");
    QVERIFY(isArranging());
    QVERIFY(!shown<norvo::WireCanvas>());
}

void tst_EditorFrame::aLineAndItsRowAreChosenTogether()
{
    click("wires");
    auto* const canvas = shown<norvo::WireCanvas>();
    auto* const rows = shown<norvo::ConnectionTable>()->findChild<QTableWidget*>("connections");
    canvas->setFocus();
    QTest::keyClick(canvas, Qt::Key_Down);
    QCOMPARE(rows->selectedItems().value(0), rows->item(0, 0));
    QTest::keyClick(canvas, Qt::Key_Escape);
    QVERIFY(rows->selectedItems().isEmpty());
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, {},
                      rows->visualItemRect(rows->item(0, 0)).center());
    QCOMPARE(canvas->selectedConnection(), 0);
}

void tst_EditorFrame::undoAndRedoFollowTheSession()
{
    QVERIFY(!key("undo")->isEnabled());
    change("Start");
    QVERIFY(key("undo")->isEnabled());
    QVERIFY(key("undo")->accessibleName().contains("Change the text"));
    click("undo");
    QCOMPARE(panel->session->document().text(), kPanel);
    QVERIFY(!key("undo")->isEnabled());
    click("redo");
    QVERIFY(panel->session->document().text().contains("Start"));
}

void tst_EditorFrame::saveIsThereWhileSomethingIsUnsaved()
{
    QVERIFY(!key("save")->isEnabled());
    change("Start");
    click("save");
    QVERIFY(!key("save")->isEnabled());
    QFile in(file->path());
    QVERIFY(in.open(QIODevice::ReadOnly));
    QCOMPARE(in.readAll(), panel->session->document().text());
}

/// Into the text of the button, without an end.
void tst_EditorFrame::typeText(const QString& text) const
{
    QVERIFY(QTest::qWaitForWindowActive(&panel->window));
    panel->session->select({"go"});
    auto* const field = shown<norvo::DeviceForm>()->findChild<QLineEdit*>("text");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, text);
}

void tst_EditorFrame::whatIsBeingTypedIsSaved()
{
    change("Start");
    typeText("Typed");
    click("save");
    QVERIFY(panel->session->isSaved());
    QVERIFY(panel->session->document().text().contains("text: Typed"));
    typeText("More");
    click("undo");
    QVERIFY(panel->session->document().text().contains("text: Typed"));
    QCOMPARE(shown<norvo::DeviceForm>()->findChild<QLineEdit*>("text")->text(), QString("Typed"));
}

void tst_EditorFrame::whatIsBeingTypedIsAskedFor()
{
    QSignalSpy finished(frame.get(), &EditorFrame::finished);
    typeText("Typed");
    click("done");
    QCOMPARE(finished.count(), 0);
    QVERIFY(sheet<norvo::SaveSheet>());
}

void tst_EditorFrame::itCanEndWhileSomethingIsTyped()
{
    typeText("Typed");
    frame.reset();
    QCOMPARE(panel->session->document().text(), kPanel);
    frame = std::make_unique<EditorFrame>(*panel->session, *file, panel->window);
    typeText("Typed");
    auto* const id = shown<norvo::DeviceForm>()->findChild<QLineEdit*>("deviceId");
    id->setFocus();
    QTest::keyClicks(id, "x");
    frame.reset();
    QVERIFY(panel->panel().device("go"));
}

void tst_EditorFrame::theEndAsksWhereSomethingIsUnsaved()
{
    QSignalSpy finished(frame.get(), &EditorFrame::finished);
    change("Start");
    click("done");
    QCOMPARE(finished.count(), 0);
    auto* const question = sheet<norvo::SaveSheet>();
    QVERIFY(question);
    QTest::mouseClick(question->findChild<QPushButton*>("discard"), Qt::LeftButton);
    QCOMPARE(finished.count(), 1);
}

void tst_EditorFrame::theEndSavesWhereThatIsChosen()
{
    QSignalSpy finished(frame.get(), &EditorFrame::finished);
    change("Start");
    click("done");
    QTest::mouseClick(sheet<norvo::SaveSheet>()->findChild<QPushButton*>("save"), Qt::LeftButton);
    QCOMPARE(finished.count(), 1);
    QVERIFY(panel->session->isSaved());
}

void tst_EditorFrame::theEndAsksNothingWhereAllIsSaved()
{
    QSignalSpy finished(frame.get(), &EditorFrame::finished);
    click("done");
    QCOMPARE(finished.count(), 1);
}

void tst_EditorFrame::theWindowIsAsBeforeOnceItIsGone()
{
    frame.reset();
    QVERIFY(!panel->window.findChild<norvo::EditorBar*>());
    QVERIFY(!panel->window.findChild<norvo::SidePane*>());
    QVERIFY(!panel->window.findChild<norvo::EditCanvas*>());
}

void tst_EditorFrame::keysOfTheKeyboardWork()
{
    panel->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel->window));
    change("Start");
    QTest::keyClick(&panel->window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(panel->session->document().text(), kPanel);
    QTest::keyClick(&panel->window, Qt::Key_F4);
    QVERIFY(shown<norvo::ConnectionTable>());
}

void tst_EditorFrame::aNewLanguageIsThatOfTheEditor()
{
    click("panel");
    panel->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel->window));
    const auto field = [this] {
        return shown<norvo::PanelForm>()->findChild<QComboBox*>("language");
    };
    field()->setFocus();
    const QString english = key("undo")->text();
    norvo::Language::use(*qApp, "de");
    QTRY_VERIFY_WITH_TIMEOUT(key("undo")->text() != english, 60000);
    QCOMPARE(key("undo")->text(), EditorFrame::tr("Undo"));
    QVERIFY(key("panel")->isChecked());
    QTRY_COMPARE_WITH_TIMEOUT(panel->window.focusWidget(), field(), 60000);
    QVERIFY2(field()->accessibleDescription().contains("Tastatur"),
             qPrintable(field()->accessibleDescription()));
    change("Los");
    click("undo");
    QVERIFY(!panel->session->canUndo());
    const auto tabs = [this] { return shown<norvo::PanelPane>(); };
    tabs()->setCurrentIndex(1);
    norvo::Language::use(*qApp, "en");
    QTRY_COMPARE_WITH_TIMEOUT(key("undo")->text(), english, 60000);
    QCOMPARE(tabs()->currentIndex(), 1);
    norvo::Language::use(*qApp, "de");
    QTRY_VERIFY_WITH_TIMEOUT(key("undo")->text() != english, 60000);
    click("wires");
    norvo::Language::use(*qApp, "en");
    QTRY_COMPARE_WITH_TIMEOUT(key("undo")->text(), english, 60000);
    QVERIFY(shown<norvo::ConnectionTable>());
    QVERIFY(panel->window.findChild<norvo::WireCanvas*>());
}

void tst_EditorFrame::openedAndClosedItLeavesNothing()
{
    frame.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const int before = panel->window.findChildren<QObject*>().size();
    for (int i = 0; i < 3; ++i) {
        EditorFrame again(*panel->session, *file, panel->window);
        for (const char* name : {"add", "wires", "device"}) {
            QTest::mouseClick(again.bar().findChild<QPushButton*>(name), Qt::LeftButton);
        }
    }
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(panel->window.findChildren<QObject*>().size(), before);
}

void tst_EditorFrame::anEmptyPanelTakesItsFirstDevice()
{
    EditedPanel empty("title: New\n", QSize(1024, 600));
    norvo::EditedFile newFile(folder->filePath("new.yaml"), *empty.session);
    EditorFrame editing(*empty.session, newFile, empty.window);
    QVERIFY(QTest::qWaitForWindowActive(&empty.window));
    empty.session->setToPlace("label");
    QApplication::processEvents();
    QWidget* const below = empty.window.childAt(empty.pages().mapTo(&empty.window, {100, 100}));
    QVERIFY(below);
    QTest::mouseClick(
        below, Qt::LeftButton, {},
        below->mapFrom(&empty.window, empty.pages().mapTo(&empty.window, {100, 100})));
    QVERIFY(empty.panel().widget("label"));
    QCOMPARE(empty.session->selection(), QStringList("label"));
}

NORVO_TEST(tst_EditorFrame)
#include "tst_EditorFrame.moc"
