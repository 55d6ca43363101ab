// SPDX-License-Identifier: GPL-3.0-or-later

#include "EditedPanel.h"
#include "TestMain.h"

#include "host/panel/edit/ParamEdit.h"

#include "norvo/BaseDevice.h"

#include <QtTest>

using norvo::EditSession;
using norvo::YamlEdit;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}} # the only one\n"
                          "  lamp: {device: label}\n"
                          "connections:\n"
                          "  - go.toggled -> lamp.inputWarning\n";

EditSession::Edit textOf(const QString& text)
{
    return [text](YamlEdit& edit) { return norvo::ParamEdit::setParam(edit, "go", "text", text); };
}

} // namespace

class tst_EditSession : public QObject
{
    Q_OBJECT

private slots:
    void aChangeIsASpliceAndRunsAtOnce();
    void whatBringsAnErrorChangesNothing();
    void undoGoesBackToEqualBytes();
    void stepsOfOneKeyAreUndoneTogether();
    void savedIsTheTextThatWasSaved();
    void aSelectionHoldsKnownDevicesOnly();
    void everyTypeCanBeAdded();
};

void tst_EditSession::aChangeIsASpliceAndRunsAtOnce()
{
    EditedPanel panel(kPanel);
    QSignalSpy changed(&*panel.session, &EditSession::changed);
    const BaseDevice* const lamp = panel.panel().device("lamp");
    QCOMPARE(panel.session->change("Text", textOf("Start")), QString());
    QCOMPARE(panel.session->document().text(), QByteArray(kPanel).replace("Go", "Start"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(panel.panel().device("go")->getParam("text").value(), QString("Start"));
    QCOMPARE(panel.panel().device("lamp"), lamp);
}

void tst_EditSession::whatBringsAnErrorChangesNothing()
{
    EditedPanel panel(kPanel);
    const BaseDevice* const button = panel.panel().device("go");
    const QString fault = panel.session->change("Size", [](YamlEdit& edit) {
        return norvo::ParamEdit::setParam(edit, "go", "widget/fontSize", "large");
    });
    QVERIFY2(fault.contains("large"), qPrintable(fault));
    QCOMPARE(panel.session->document().text(), kPanel);
    QCOMPARE(panel.panel().device("go"), button);
    QVERIFY(!panel.session->canUndo());
}

void tst_EditSession::undoGoesBackToEqualBytes()
{
    EditedPanel panel(kPanel);
    panel.session->change("First", textOf("Start"));
    const QByteArray first = panel.session->document().text();
    panel.session->change("Second", textOf("Begin"));
    const QByteArray second = panel.session->document().text();
    QCOMPARE(panel.session->undoName(), QString("Second"));
    QCOMPARE(panel.session->undo(), QString());
    QCOMPARE(panel.session->document().text(), first);
    QCOMPARE(panel.session->undo(), QString());
    QCOMPARE(panel.session->document().text(), kPanel);
    QVERIFY(!panel.session->canUndo());
    QCOMPARE(panel.panel().device("go")->getParam("text").value(), QString("Go"));
    panel.session->redo();
    QCOMPARE(panel.session->redoName(), QString("Second"));
    panel.session->redo();
    QCOMPARE(panel.session->document().text(), second);
}

void tst_EditSession::stepsOfOneKeyAreUndoneTogether()
{
    EditedPanel panel(kPanel);
    for (const char* text : {"S", "St", "Sta"}) {
        panel.session->change("Text", textOf(text), "go.text");
    }
    panel.session->change("Other", textOf("Other"), "another key");
    panel.session->undo();
    QVERIFY(panel.session->document().text().contains("text: Sta}"));
    panel.session->undo();
    QCOMPARE(panel.session->document().text(), kPanel);
}

void tst_EditSession::savedIsTheTextThatWasSaved()
{
    EditedPanel panel(kPanel);
    QVERIFY(panel.session->isSaved());
    panel.session->change("Text", textOf("Start"));
    QVERIFY(!panel.session->isSaved());
    panel.session->setSaved();
    QVERIFY(panel.session->isSaved());
    panel.session->undo();
    QVERIFY(!panel.session->isSaved());
    panel.session->change("Text", textOf("Another"));
    panel.session->undo();
    QVERIFY(!panel.session->isSaved());
}

void tst_EditSession::aSelectionHoldsKnownDevicesOnly()
{
    EditedPanel panel(kPanel);
    QSignalSpy changed(&*panel.session, &EditSession::selectionChanged);
    panel.session->select({"go", "nobody", "lamp", "go"});
    QCOMPARE(panel.session->selection(), QStringList({"go", "lamp"}));
    panel.session->select({"go", "lamp"});
    QCOMPARE(changed.count(), 1);
}

NORVO_TEST(tst_EditSession)
/// Some do not start without a parameter, such as a program's command.
void tst_EditSession::everyTypeCanBeAdded()
{
    EditedPanel panel(kPanel);
    EditSession& session = *panel.session;
    const QStringList types = EditedPanel::types().keys();
    QVERIFY(types.size() > 25);
    for (const QString& type : types) {
        QCOMPARE(session.addDevice(type), QString());
        QCOMPARE(session.selection().size(), 1);
        QVERIFY2(panel.panel().device(session.selection().constFirst()), qPrintable(type));
        session.undo();
    }
    QCOMPARE(session.document().text(), kPanel);
    QCOMPARE(session.addDevice("process"), QString());
    QVERIFY(session.document().text().contains("command: "));
    QCOMPARE(session.undoName(), QString("Add process"));
}

#include "tst_EditSession.moc"
