// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmLines.h"

#include "TestMain.h"

using namespace norvo;

class tst_AlarmLines : public QObject
{
    Q_OBJECT

    /// The texts of all lines, in one.
    static QString lines(const AlarmModel& model)
    {
        QStringList texts;
        for (const AlarmLine& line : alarmLines(model)) {
            texts.append(textOf(line, model));
        }
        return texts.join(", ");
    }

    static int begin(AlarmModel& model, const QString& text, AlarmPriority priority, qint64 time)
    {
        AlarmDefinition definition{text, {}, text};
        definition.priority = priority;
        const int alarm = model.add(definition);
        model.setCondition(alarm, true, {time, time});
        return alarm;
    }

private slots:
    void worstStandsFirst()
    {
        AlarmModel model;
        begin(model, "low", AlarmPriority::Low, 1000);
        begin(model, "old", AlarmPriority::Medium, 3000);
        const int known = begin(model, "known", AlarmPriority::High, 5000);
        const int gone = begin(model, "gone", AlarmPriority::Medium, 7000);
        begin(model, "high", AlarmPriority::High, 9000);
        begin(model, "new", AlarmPriority::Medium, 11000);
        model.acknowledge(known, {11000, 11000});
        model.setCondition(gone, false, {11000, 11000});
        QCOMPARE(lines(model), QString("high, new, old, gone, low, known"));
    }

    void floodIsOneLineThatSaysSo()
    {
        AlarmModel model;
        const int single = begin(model, "single", AlarmPriority::High, 1000);
        for (int i = 0; i < 100; ++i) {
            begin(model, "a" + QString::number(i), AlarmPriority::Medium, 5000 + i);
        }
        QCOMPARE(lines(model), QString("single, 100 alarms at once, first: a0"));
        QCOMPARE(alarmLines(model)[1].alarms.size(), 100);
        QVERIFY(!alarmLines(model)[0].isFlood());
        model.acknowledge(single, {6000, 6000});
        QCOMPARE(lines(model), QString("100 alarms at once, first: a0, single"));
    }

    void fewAtOnceAreLinesOfTheirOwn()
    {
        AlarmModel model;
        for (int i = 0; i < kFloodSize - 1; ++i) {
            begin(model, QString::number(i), AlarmPriority::Medium, 5000);
        }
        QCOMPARE(alarmLines(model).size(), kFloodSize - 1);
    }

    void shelvedAndQuietAlarmsHaveNoLine()
    {
        AlarmModel model;
        model.shelve(begin(model, "a", AlarmPriority::High, 1000), Duration(1000), {2000, 2000});
        model.add({"b", {}, {}});
        QVERIFY(alarmLines(model).isEmpty());
    }
};

NORVO_TEST(tst_AlarmLines)

#include "tst_AlarmLines.moc"
