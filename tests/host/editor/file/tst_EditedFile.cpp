// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/file/ConflictSheet.h"
#include "host/editor/file/EditedFile.h"
#include "host/panel/edit/ParamEdit.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using norvo::EditedFile;
using norvo::YamlEdit;

namespace {

const QByteArray kPanel = "title: Bench\n"
                          "devices:\n"
                          "  go: {device: button, params: {text: Go}} # the only one\n";

} // namespace

class tst_EditedFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void savesWhatIsEdited();
    void savesAFileThatIsNotThereYet();
    void aFileThatCannotBeWrittenIsSaidAndStaysUnsaved();
    void takesWhatOthersWroteWhereNothingIsUnsaved();
    void asksWhereOthersWroteAndSomethingIsUnsaved();
    void neverSavesOverWhatOthersWroteUnasked();
    void saysWhereWhatOthersWroteDoesNotRun();
    void theSheetShowsBothAndTakesTheirs();
    void theSheetSavesMineOverTheirs();
    void theSheetDoesNothingWithoutAnAnswer();

private:
    void write(const QByteArray& text)
    {
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(text);
    }
    QByteArray written() const
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(none)");
    }
    void change(const QString& text)
    {
        QCOMPARE(panel->session->change("Text",
                                        [&text](YamlEdit& edit) {
                                            return norvo::ParamEdit::setParam(edit, "go", "text",
                                                                              text);
                                        }),
                 QString());
    }
    QByteArray with(const char* text) const { return QByteArray(kPanel).replace("Go", text); }
    std::unique_ptr<QTemporaryDir> folder;
    QString path;
    std::unique_ptr<EditedPanel> panel;
    std::unique_ptr<EditedFile> file;
};

void tst_EditedFile::init()
{
    folder = std::make_unique<QTemporaryDir>();
    path = folder->filePath("panel.yaml");
    write(kPanel);
    panel = std::make_unique<EditedPanel>(kPanel);
    file = std::make_unique<EditedFile>(path, *panel->session);
}

void tst_EditedFile::cleanup()
{
    file.reset();
    panel.reset();
}

void tst_EditedFile::savesWhatIsEdited()
{
    change("Start");
    QCOMPARE(written(), kPanel);
    QCOMPARE(file->save(), QString());
    QCOMPARE(written(), with("Start"));
    QVERIFY(panel->session->isSaved());
}

void tst_EditedFile::savesAFileThatIsNotThereYet()
{
    QVERIFY(QFile::remove(path));
    EditedFile fresh(path, *panel->session);
    fresh.look();
    QCOMPARE(fresh.save(), QString());
    QCOMPARE(written(), kPanel);
}

void tst_EditedFile::aFileThatCannotBeWrittenIsSaidAndStaysUnsaved()
{
    EditedFile nowhere(folder->filePath("none/panel.yaml"), *panel->session);
    change("Start");
    QVERIFY(nowhere.save().contains("none/panel.yaml"));
    QVERIFY(!panel->session->isSaved());
}

void tst_EditedFile::takesWhatOthersWroteWhereNothingIsUnsaved()
{
    QSignalSpy asked(file.get(), &EditedFile::conflict);
    write(with("Theirs"));
    file->look();
    QCOMPARE(panel->session->document().text(), with("Theirs"));
    QVERIFY(panel->session->isSaved());
    QCOMPARE(asked.count(), 0);
    panel->session->undo();
    QCOMPARE(panel->session->document().text(), kPanel);
}

void tst_EditedFile::asksWhereOthersWroteAndSomethingIsUnsaved()
{
    QSignalSpy asked(file.get(), &EditedFile::conflict);
    change("Mine");
    write(with("Theirs"));
    file->look();
    QCOMPARE(asked.count(), 1);
    QCOMPARE(panel->session->document().text(), with("Mine"));
    file->look();
    QCOMPARE(asked.count(), 1);
}

void tst_EditedFile::neverSavesOverWhatOthersWroteUnasked()
{
    QSignalSpy asked(file.get(), &EditedFile::conflict);
    change("Mine");
    write(with("Theirs"));
    QCOMPARE(file->save(), QString());
    QCOMPARE(asked.count(), 1);
    QCOMPARE(written(), with("Theirs"));
    QVERIFY(!panel->session->isSaved());
}

void tst_EditedFile::saysWhereWhatOthersWroteDoesNotRun()
{
    QSignalSpy told(file.get(), &EditedFile::problem);
    write("devices: [\n");
    file->look();
    QCOMPARE(told.count(), 1);
    QCOMPARE(panel->session->document().text(), kPanel);
}

void tst_EditedFile::theSheetShowsBothAndTakesTheirs()
{
    change("Mine");
    write(with("Theirs"));
    file->look();
    auto* const sheet =
        new norvo::ConflictSheet(panel->window, *file, panel->session->document().text());
    sheet->present();
    QVERIFY(sheet->findChild<QPlainTextEdit*>("left")->toPlainText().contains("text: Mine"));
    QVERIFY(sheet->findChild<QPlainTextEdit*>("right")->toPlainText().contains("text: Theirs"));
    QCOMPARE(sheet->findChild<QPlainTextEdit*>("left")->extraSelections().size(), 1);
    QTest::mouseClick(sheet->findChild<QPushButton*>("takeTheirs"), Qt::LeftButton);
    QCOMPARE(panel->session->document().text(), with("Theirs"));
    QCOMPARE(panel->session->undo(), QString());
    QCOMPARE(panel->session->document().text(), with("Mine"));
}

void tst_EditedFile::theSheetSavesMineOverTheirs()
{
    change("Mine");
    write(with("Theirs"));
    file->look();
    auto* const sheet =
        new norvo::ConflictSheet(panel->window, *file, panel->session->document().text());
    sheet->present();
    QTest::mouseClick(sheet->findChild<QPushButton*>("keepMine"), Qt::LeftButton);
    QCOMPARE(written(), with("Mine"));
    QVERIFY(panel->session->isSaved());
}

void tst_EditedFile::theSheetDoesNothingWithoutAnAnswer()
{
    change("Mine");
    write(with("Theirs"));
    file->look();
    auto* const sheet =
        new norvo::ConflictSheet(panel->window, *file, panel->session->document().text());
    sheet->present();
    QTest::keyClick(sheet, Qt::Key_Escape);
    QCOMPARE(written(), with("Theirs"));
    QCOMPARE(panel->session->document().text(), with("Mine"));
    QVERIFY(!panel->session->isSaved());
}

NORVO_TEST(tst_EditedFile)
#include "tst_EditedFile.moc"
