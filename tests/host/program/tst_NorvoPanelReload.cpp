// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"

#include <QtTest>

#include <csignal>

namespace {

/// A child program that says once who it is, and a label.
QByteArray panelOf(const QByteArray& text, const QByteArray& more = {})
{
    return "devices:\n"
           "  child: {device: process, params: {command: \"sh -c 'echo $$ >> pids; sleep 600'\"}}\n"
           "  shown: {device: label, params: {Value: \"" +
           text + "\"}}\n" + more;
}

} // namespace

/// The program while its panel file changes.
class tst_NorvoPanelReload : public QObject
{
    Q_OBJECT

private slots:
    void changedFileIsTakenOver();
    void badFileIsReportedAndThePanelRunsOn();
    void nothingIsFollowedWithoutLeave();
};

void tst_NorvoPanelReload::changedFileIsTakenOver()
{
    const PanelFolder folder(panelOf("one"));
    PanelProcess panel({"--no-state", "--audit", folder.filePath("audit"), folder.panel()});
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(folder.content("pids").count('\n'), 1, PanelProcess::kPatience);
    folder.fill("panel.yaml", panelOf("two"));
    QTRY_VERIFY_WITH_TIMEOUT(folder.content("audit").contains("\"reload\""),
                             PanelProcess::kPatience);
    folder.fill("panel.yaml", panelOf("two").replace("label", "lable"));
    QVERIFY(panel.waitForErrorText("unknown device type \"lable\""));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(folder.content("pids").count('\n'), 1); // The child has run on.
}

void tst_NorvoPanelReload::badFileIsReportedAndThePanelRunsOn()
{
    const PanelFolder folder(panelOf("one"));
    PanelProcess panel({"--no-state", folder.panel()});
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(folder.content("pids").count('\n'), 1, PanelProcess::kPatience);
    folder.fill("panel.yaml", "devices: [");
    QVERIFY(panel.waitForErrorText("panel.yaml:"));
    folder.fill("panel.yaml", panelOf("two", "  child2: {device: process, params: {command: \"sh "
                                             "-c 'echo $$ >> pids; sleep 600'\"}}\n"));
    QTRY_COMPARE_WITH_TIMEOUT(folder.content("pids").count('\n'), 2, PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
}

void tst_NorvoPanelReload::nothingIsFollowedWithoutLeave()
{
    const PanelFolder folder(panelOf("one"));
    PanelProcess panel({"--no-state", "--no-reload", folder.panel()});
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(folder.content("pids").count('\n'), 1, PanelProcess::kPatience);
    folder.fill("panel.yaml", "devices: [");
    QTest::qWait(1000);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QVERIFY(!panel.errorLines().join(' ').contains("panel.yaml:"));
}

NORVO_TEST(tst_NorvoPanelReload)
#include "tst_NorvoPanelReload.moc"
