// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/file/RecoverySheet.h"
#include "host/editor/file/UnsavedCopy.h"
#include "host/panel/edit/ParamEdit.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using norvo::UnsavedCopy;
using norvo::YamlEdit;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}}\n";
constexpr int kPatience = 60000; // ms

void change(norvo::EditSession& session, const QString& text)
{
    QCOMPARE(session.change("Text",
                            [&text](YamlEdit& edit) {
                                return norvo::ParamEdit::setParam(edit, "go", "text", text);
                            }),
             QString());
}

} // namespace

class tst_UnsavedCopy : public QObject
{
    Q_OBJECT

private slots:
    void aChangeIsKeptBesideTheFile();
    void whatIsSavedIsKeptNoLonger();
    void undoneToTheSavedTextItIsKeptNoLonger();
    void aCopyOfAnEarlierEditingStaysUntilItIsReplaced();
    void theEndKeepsTheLatestChange();
    void itSaysOnceThatItCannotBeKept();
    void theSheetAsks();

private:
    QTemporaryDir folder;
    const QString path = folder.filePath("panel.yaml");
};

void tst_UnsavedCopy::aChangeIsKeptBesideTheFile()
{
    EditedPanel panel(kPanel);
    UnsavedCopy copy(path, *panel.session);
    QVERIFY(!UnsavedCopy::left(path));
    change(*panel.session, "Start");
    QTRY_VERIFY_WITH_TIMEOUT(UnsavedCopy::left(path), kPatience);
    QCOMPARE(*UnsavedCopy::left(path), panel.session->document().text());
    copy.drop();
    QVERIFY(!UnsavedCopy::left(path));
}

void tst_UnsavedCopy::whatIsSavedIsKeptNoLonger()
{
    EditedPanel panel(kPanel);
    UnsavedCopy copy(path, *panel.session);
    change(*panel.session, "Start");
    QTRY_VERIFY_WITH_TIMEOUT(UnsavedCopy::left(path), kPatience);
    panel.session->setSaved();
    QVERIFY(!UnsavedCopy::left(path));
}

void tst_UnsavedCopy::undoneToTheSavedTextItIsKeptNoLonger()
{
    EditedPanel panel(kPanel);
    UnsavedCopy copy(path, *panel.session);
    change(*panel.session, "Start");
    QTRY_VERIFY_WITH_TIMEOUT(UnsavedCopy::left(path), kPatience);
    panel.session->undo();
    QVERIFY(!UnsavedCopy::left(path));
}

void tst_UnsavedCopy::aCopyOfAnEarlierEditingStaysUntilItIsReplaced()
{
    QFile earlier(UnsavedCopy::nameFor(path));
    QVERIFY(earlier.open(QIODevice::WriteOnly));
    earlier.write("title: Earlier\n");
    earlier.close();
    EditedPanel panel(kPanel);
    {
        UnsavedCopy copy(path, *panel.session);
        panel.session->setSaved();
    }
    QCOMPARE(*UnsavedCopy::left(path), QByteArray("title: Earlier\n"));
    QVERIFY(earlier.remove());
}

void tst_UnsavedCopy::theEndKeepsTheLatestChange()
{
    EditedPanel panel(kPanel);
    {
        UnsavedCopy copy(path, *panel.session);
        change(*panel.session, "Start");
    }
    QCOMPARE(*UnsavedCopy::left(path), panel.session->document().text());
    QVERIFY(QFile::remove(UnsavedCopy::nameFor(path)));
}

void tst_UnsavedCopy::itSaysOnceThatItCannotBeKept()
{
    EditedPanel panel(kPanel);
    UnsavedCopy copy(folder.filePath("none/panel.yaml"), *panel.session);
    QSignalSpy told(&copy, &UnsavedCopy::problem);
    change(*panel.session, "Start");
    QTRY_COMPARE_WITH_TIMEOUT(told.count(), 1, kPatience);
    change(*panel.session, "Again");
    QTest::qWait(1500);
    QCOMPARE(told.count(), 1);
}

void tst_UnsavedCopy::theSheetAsks()
{
    EditedPanel panel(kPanel);
    for (const char* key : {"takeOver", "drop"}) {
        auto* const sheet = new norvo::RecoverySheet(panel.window, "title: Left\n", kPanel);
        QSignalSpy taken(sheet, &norvo::RecoverySheet::takeOverChosen);
        QSignalSpy dropped(sheet, &norvo::RecoverySheet::dropChosen);
        sheet->present();
        QCOMPARE(sheet->findChild<QPlainTextEdit*>("left")->toPlainText(),
                 QString("title: Left\n"));
        QTest::mouseClick(sheet->findChild<QPushButton*>(key), Qt::LeftButton);
        QCOMPARE(taken.count(), key == QByteArray("takeOver") ? 1 : 0);
        QCOMPARE(dropped.count(), key == QByteArray("drop") ? 1 : 0);
    }
}

NORVO_TEST(tst_UnsavedCopy)
#include "tst_UnsavedCopy.moc"
