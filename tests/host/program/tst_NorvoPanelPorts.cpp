// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

const QByteArray
    kPanel("devices:\n"
           "  bench:\n"
           "    device: process\n"
           "    params: {command: \"sh -c '(while echo T 21; do sleep 0.1; done) & cat >log'\"}\n"
           "    outputs: {t: \"T (.*)\"} # of the bench\n"
           "    inputs: {set: {as: \"set %1\", resend: true}}\n"
           "  back:\n"
           "    device: process\n"
           "    params: {command: cat}\n"
           "    inputs: {put: \"put %1\"}\n"
           "    outputs: {put-back: \"put (.*)\"}\n"
           "connections:\n"
           "  - bench.t -> back.put\n"
           "  - back.put-back -> bench.set\n");

} // namespace

/// Named outputs and inputs, seen from outside of the program.
class tst_NorvoPanelPorts : public QObject
{
    Q_OBJECT

private slots:
    void valuesRunFromProgramToProgram();
    void checkAndStartReportADefinitionOnce();
    void setLeavesThemAsTheyAre();
    void typesThatTakeThemSaySo();
};

void tst_NorvoPanelPorts::valuesRunFromProgramToProgram()
{
    const PanelFolder folder(kPanel);
    PanelProcess check({"--check", folder.panel()});
    QCOMPARE(check.runToEnd(), 0);
    PanelProcess panel({"--no-state", folder.panel()});
    panel.start();
    // Again and again: a line for a program that has not started yet is lost.
    QTRY_VERIFY_WITH_TIMEOUT(folder.content("log").startsWith("set 21\n"), PanelProcess::kPatience);
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 0);
}

void tst_NorvoPanelPorts::checkAndStartReportADefinitionOnce()
{
    const PanelFolder folder("devices:\n"
                             "  a: {device: process, params: {command: cat}, outputs: {t: \"(\"}}\n"
                             "  b: {device: label}\n"
                             "connections:\n"
                             "  - a.t(double) -> b.input\n");
    const QString error = folder.panel() + ":2:61: error: output \"t\": broken regular expression: "
                                           "missing closing parenthesis, at character 2";
    PanelProcess check({"--check", folder.panel()});
    QCOMPARE(check.runToEnd(), 1);
    QCOMPARE(check.outputLines().filter("error: "), QStringList(error));
    PanelProcess panel({"--no-state", folder.panel()});
    panel.start();
    QVERIFY(panel.waitForErrorText("at character 2"));
    panel.sendSignal(SIGTERM);
    QCOMPARE(panel.waitForEnd(), 1);
    QCOMPARE(panel.errorLines(), QStringList(error));
}

void tst_NorvoPanelPorts::setLeavesThemAsTheyAre()
{
    const PanelFolder folder(kPanel);
    PanelProcess program(
        {"--set", "back.restart=always", "--set", "bench.command=cat", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QCOMPARE(program.errorLines(), QStringList());
    QByteArray expected = kPanel;
    expected.replace("{command: cat}", "{command: cat, restart: always}");
    expected.replace("\"sh -c '(while echo T 21; do sleep 0.1; done) & cat >log'\"", "\"cat\"");
    QCOMPARE(folder.content("panel.yaml"), expected);
}

void tst_NorvoPanelPorts::typesThatTakeThemSaySo()
{
    PanelProcess json({"--describe-all", "--format", "json"});
    QCOMPARE(json.runToEnd(), 0);
    QStringList types;
    for (const QJsonValue& type :
         QJsonDocument::fromJson(json.readAllStandardOutput())["types"].toArray()) {
        if (type["takesPorts"].toBool()) {
            types.append(type["type"].toString());
            QVERIFY(!type["outputDefinition"].toString().isEmpty());
        }
    }
    QCOMPARE(types, (QStringList{"calc", "modbus", "mqtt", "process", "serial", "websocket"}));
    for (const char* format : {"text", "markdown"}) {
        PanelProcess described({"--describe", "process", "--format", format});
        QCOMPARE(described.runToEnd(), 0);
        const QByteArray text = described.readAllStandardOutput();
        QVERIFY2(text.contains("A regular expression that is looked for") &&
                     text.contains("A line that is written"),
                 format);
    }
}

NORVO_GUILESS_TEST(tst_NorvoPanelPorts)
#include "tst_NorvoPanelPorts.moc"
