// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

QList<QJsonObject> linesOf(const QByteArray& text)
{
    QList<QJsonObject> lines;
    for (const QByteArray& line : text.split('\n')) {
        if (!line.isEmpty()) {
            lines.append(QJsonDocument::fromJson(line).object());
        }
    }
    return lines;
}

} // namespace

/// The audit of a panel, seen from outside of the program.
class tst_NorvoPanelAudit : public QObject
{
    Q_OBJECT

private slots:
    void startAndStopAreRecorded();
    void commandLineNamesAnotherFile();
    void auditThatCannotBeWrittenIsToldAndThePanelRuns();
    void pictureRecordsNothing();
};

void tst_NorvoPanelAudit::startAndStopAreRecorded()
{
    const PanelFolder folder("title: Boiler\naudit: done.jsonl\ndevices: {b: {device: button}}\n");
    PanelProcess panel({"--no-state", folder.panel()});
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(linesOf(folder.content("done.jsonl")).size(), 1,
                              PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    const auto lines = linesOf(folder.content("done.jsonl"));
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines[0]["event"], QJsonValue("start"));
    QCOMPARE(lines[0]["panel"], QJsonValue("Boiler"));
    QCOMPARE(lines[1]["event"], QJsonValue("stop"));
}

void tst_NorvoPanelAudit::commandLineNamesAnotherFile()
{
    const PanelFolder folder("audit: done.jsonl\ndevices: {b: {device: button}}\n");
    const QTemporaryDir elsewhere;
    PanelProcess panel({"--no-state", "--audit", "other.jsonl", folder.panel()});
    panel.setWorkingDirectory(elsewhere.path());
    panel.start();
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(elsewhere.filePath("other.jsonl")),
                             PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QVERIFY(!QFile::exists(folder.filePath("done.jsonl")));
    QFile file(elsewhere.filePath("other.jsonl"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(linesOf(file.readAll()).value(0)["panel"], QJsonValue("panel.yaml"));
}

void tst_NorvoPanelAudit::auditThatCannotBeWrittenIsToldAndThePanelRuns()
{
    const PanelFolder folder("audit: none/done.jsonl\ndevices: {b: {device: button}}\n");
    PanelProcess panel({"--no-state", folder.panel()});
    panel.start();
    QVERIFY(panel.waitForErrorText("what is done at the panel is not recorded"));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
    QCOMPARE(panel.errorLines().size(), 1);
}

void tst_NorvoPanelAudit::pictureRecordsNothing()
{
    const PanelFolder folder("audit: done.jsonl\ndevices: {b: {device: button}}\n");
    PanelProcess panel({"--screenshot", folder.filePath("p.png"), folder.panel()});
    QCOMPARE(panel.runToEnd(), 0);
    QVERIFY(QFile::exists(folder.filePath("p.png")));
    QVERIFY(!QFile::exists(folder.filePath("done.jsonl")));
}

NORVO_GUILESS_TEST(tst_NorvoPanelAudit)
#include "tst_NorvoPanelAudit.moc"
