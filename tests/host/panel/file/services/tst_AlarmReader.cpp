// SPDX-License-Identifier: GPL-3.0-or-later

#include "../PanelTexts.h"
#include "TestMain.h"

using namespace norvo;

/// What a panel file says on alarms.
class tst_AlarmReader : public QObject
{
    Q_OBJECT

private slots:
    void alarmHasItsDefaults()
    {
        const auto alarms = panels::sound("alarms: [{signal: a.output, above: 80}]").alarms;
        QCOMPARE(alarms.size(), 1);
        const AlarmSetting& alarm = alarms[0];
        QCOMPARE(alarm.device, QString("a"));
        QCOMPARE(alarm.signal, QString("output"));
        QCOMPARE(alarm.signalPlace.column, 21);
        QVERIFY(alarm.limit.kind == AlarmLimit::Kind::Above);
        QCOMPARE(alarm.limit.number, 80.);
        QCOMPARE(alarm.limit.deadband, 0.);
        QVERIFY(alarm.delay.count() == 0 && alarm.offDelay.count() == 0);
        QVERIFY(alarm.priority == AlarmPriority::Medium);
        QCOMPARE(alarm.text, QString("a.output above 80"));
        QCOMPARE(alarm.id, alarm.text);
        QVERIFY(alarm.help.isEmpty() && alarm.hasSound);
    }

    void everyKeyIsRead()
    {
        const AlarmSetting alarm =
            panels::sound("alarms:\n"
                          "  - {signal: a.output(double), below: -1.5, deadband: 0.5, delay: 2 s,\n"
                          "     offDelay: 5 min, priority: high, text: Too cold, help: Heat it,\n"
                          "     sound: no}\n")
                .alarms.value(0);
        QCOMPARE(alarm.signal, QString("output(double)"));
        QVERIFY(alarm.limit.kind == AlarmLimit::Kind::Below);
        QCOMPARE(alarm.limit.number, -1.5);
        QCOMPARE(alarm.limit.deadband, 0.5);
        QCOMPARE(int(alarm.delay.count()), 2000);
        QCOMPARE(int(alarm.offDelay.count()), 300000);
        QVERIFY(alarm.priority == AlarmPriority::High);
        QCOMPARE(alarm.text, QString("Too cold"));
        QCOMPARE(alarm.help, QString("Heat it"));
        QVERIFY(!alarm.hasSound);
    }

    void equalsTakesNumbersAndTexts()
    {
        const auto alarms = panels::sound("alarms:\n- {signal: a.x, equals: 3}\n"
                                          "- {signal: a.x, equals: broken}\n"
                                          "- {signal: a.x, is: no}\n")
                                .alarms;
        QCOMPARE(alarms.size(), 3);
        QCOMPARE(alarms[0].limit.number, 3.);
        QVERIFY(qIsNaN(alarms[1].limit.number));
        QCOMPARE(alarms[1].limit.text, QString("broken"));
        QVERIFY(alarms[2].limit.kind == AlarmLimit::Kind::Is && !alarms[2].limit.isYes);
    }

    void alarmsOfATemplateAreThoseOfEachUse()
    {
        const PanelDescription panel =
            panels::sound("templates:\n"
                          "  pump:\n"
                          "    with: {limit: }\n"
                          "    devices: {motor: {device: slider}}\n"
                          "    alarms: [{signal: motor.output, above: $(limit)}]\n"
                          "devices:\n"
                          "  p1: {use: pump, with: {limit: 80}}\n"
                          "  p2: {use: pump, with: {limit: 90}}\n");
        QCOMPARE(panel.alarms.size(), 2);
        QCOMPARE(panel.alarms[0].id, QString("p1-motor.output above 80"));
        QCOMPARE(panel.alarms[1].id, QString("p2-motor.output above 90"));
    }

    void errorIsReported_data()
    {
        QTest::addColumn<QByteArray>("alarms");
        QTest::addColumn<QString>("error");
        const auto row = [](const char* name, const QByteArray& alarm, const QString& error) {
            QTest::newRow(name) << alarm << error;
        };
        row("no list", "{a: b}",
            "1:9: error: alarms must be a list, with an entry such as "
            "\"- {signal: boiler.output, above: 80}\" for each");
        row("no map", "[a.b]",
            "1:10: error: an alarm is a map such as {signal: boiler.output, "
            "above: 80}");
        row("no signal", "[{above: 80}]",
            "1:10: error: the alarm has no signal; add \"signal: device.signal\"");
        row("no limit", "[{signal: a.b}]",
            "1:10: error: the alarm has no limit; add one of above, below, equals and is");
        row("two limits", "[{signal: a.b, above: 1, below: 0}]",
            "1:41: error: an alarm has one of above, below, equals and is; this one has above "
            "already; write an alarm for each");
        row("no number", "[{signal: a.b, above: hot}]", "1:31: error: above must be a number");
        row("infinite", "[{signal: a.b, above: inf}]", "1:31: error: above must be a number");
        row("dead band below nothing", "[{signal: a.b, above: 1, deadband: -1}]",
            "1:44: error: deadband must be a number from 0 on");
        row("dead band of a text", "[{signal: a.b, equals: x, deadband: 1}]",
            "1:45: error: a deadband goes with above or below only");
        row("delay without unit", "[{signal: a.b, above: 1, delay: 2}]",
            "1:41: error: delay lacks a unit; write \"2 ms\", \"2 s\", \"2 min\" or \"2 h\"");
        row("priority", "[{signal: a.b, above: 1, priority: hihg}]",
            "1:44: error: priority must be one of high, medium, low; did you mean \"high\"?");
        row("misspelt key", "[{signal: a.b, above: 1, prority: low}]",
            "1:34: error: unknown key \"prority\" of an alarm; did you mean \"priority\"?");
        row("is", "[{signal: a.b, is: perhaps}]", "1:28: error: is must be true or false");
        row("sound", "[{signal: a.b, above: 1, sound: loud}]",
            "1:41: error: sound must be true or false");
        row("signal of no device", "[{signal: output, above: 1}]",
            "1:19: error: \"output\" names no signal; write \"output.signal\"");
        row("connection", "[{signal: a.b -> c.d, above: 1}]",
            "1:19: error: a signal is one device's, \"device.signal\"");
        row("twice", "\n- {signal: a.b, above: 1}\n- {signal: a.b, above: 1, delay: 1 s}",
            "3:3: error: the alarm \"a.b above 1\" is given twice; it is already in line 2");
    }

    void errorIsReported()
    {
        QFETCH(QByteArray, alarms);
        QFETCH(QString, error);
        QCOMPARE(panels::errorsOf("alarms: " + alarms), error);
    }

    void alarmsAreBounded()
    {
        QByteArray text("alarms:\n");
        for (int i = 0; i < 5001; ++i) {
            text += "- {signal: a.b, above: " + QByteArray::number(i) + "}\n";
        }
        QCOMPARE(panels::errorsOf(text), QString("5002:3: error: more than 5,000 alarms"));
    }
};

NORVO_TEST(tst_AlarmReader)

#include "tst_AlarmReader.moc"
