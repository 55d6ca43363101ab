// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmHistory.h"

#include "FullDisk.h"
#include "TestMain.h"

using namespace norvo;

class tst_AlarmHistory : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_file;
    QStringList m_problems;

    static AlarmEntry entry(const QString& id, const QString& event, AlarmState state,
                            qint64 time = 1700000000123)
    {
        return {time,   event, id,       "boiler", AlarmPriority::High, "Boiler too hot",
                "81.5", state, time - 5, 0};
    }

    std::unique_ptr<AlarmHistory> open(const QString& file)
    {
        auto history = std::make_unique<AlarmHistory>(file);
        connect(history.get(), &AlarmHistory::problem, this,
                [this](const QString& line) { m_problems.append(line); });
        history->read();
        return history;
    }

    static QByteArray contentOf(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(const QByteArray& content) const
    {
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private slots:
    void init()
    {
        m_problems.clear();
        m_file = m_folder.filePath(QString(QTest::currentTestFunction()) + ".alarms.jsonl");
    }

    void fileStandsBesideTheState()
    {
        QCOMPARE(AlarmHistory::besideState("a/panel.state.yaml"), QString("a/panel.alarms.jsonl"));
        QCOMPARE(AlarmHistory::besideState("panel.yml.state.yaml"),
                 QString("panel.yml.alarms.jsonl"));
        QCOMPARE(AlarmHistory::besideState("kept"), QString("kept.alarms.jsonl"));
    }

    void lineHoldsAllOfAnEntry()
    {
        AlarmEntry shelved = entry("a", "shelved", AlarmState::ActiveAcknowledged);
        shelved.shelvedUntil = 1700000300000;
        const QByteArray line = shelved.toJson();
        QCOMPARE(line, QByteArray("{\"alarm\":\"a\",\"detail\":\"81.5\",\"device\":\"boiler\","
                                  "\"event\":\"shelved\",\"priority\":\"high\","
                                  "\"shelvedUntil\":\"2023-11-14T22:18:20.000Z\","
                                  "\"since\":\"2023-11-14T22:13:20.118Z\","
                                  "\"state\":\"active-acknowledged\","
                                  "\"text\":\"Boiler too hot\","
                                  "\"time\":\"2023-11-14T22:13:20.123Z\"}\n"));
        const auto read = AlarmEntry::fromJson(line);
        QVERIFY(read);
        QCOMPARE(read->toJson(), line);
        QCOMPARE(read->shelvedUntil, shelved.shelvedUntil);
        QCOMPARE(read->since, shelved.since);
    }

    void entriesAreThereAgainAtTheNextStart()
    {
        auto history = open(m_file);
        history->add(entry("a", "began", AlarmState::ActiveUnacknowledged));
        history->add(entry("b", "began", AlarmState::ActiveUnacknowledged));
        history->add(entry("a", "acknowledged", AlarmState::ActiveAcknowledged));
        history->add(entry("b", "ended", AlarmState::ClearedUnacknowledged));
        history->add(entry("c", "ended", AlarmState::Normal));
        QTRY_COMPARE(contentOf(m_file).count('\n'), 5); // By itself, soon.
        history.reset();
        history = open(m_file);
        QCOMPARE(int(history->entries().size()), 5);
        QCOMPARE(history->unfinished().size(), 2);
        QVERIFY(history->unfinished()["a"].state == AlarmState::ActiveAcknowledged);
        QVERIFY(history->unfinished()["b"].state == AlarmState::ClearedUnacknowledged);
        QCOMPARE(m_problems, QStringList());
    }

    void withoutFileAllStaysInMemory()
    {
        const auto history = open({});
        history->add(entry("a", "began", AlarmState::ActiveUnacknowledged));
        history->save();
        QCOMPARE(int(history->entries().size()), 1);
        QCOMPARE(m_problems, QStringList());
    }

    void onlyTheLastEntriesAreKept()
    {
        auto history = open(m_file);
        history->add(entry("old", "began", AlarmState::ActiveUnacknowledged));
        for (int i = 0; i < 25000; ++i) {
            history->add(entry("a", "ended", AlarmState::Normal));
            if (i % 100 == 0) {
                history->save();
            }
        }
        QCOMPARE(int(history->entries().size()), 10000);
        history.reset();
        QVERIFY(contentOf(m_file).count('\n') <= 20000);
        history = open(m_file);
        QCOMPARE(int(history->entries().size()), 10000);
        QVERIFY(history->unfinished().contains("old")); // It is not over.
    }

    void halfALineIsLeftOutAndNotAddedTo()
    {
        const QByteArray whole = entry("a", "began", AlarmState::ActiveUnacknowledged).toJson();
        write(whole + whole.left(40));
        auto history = open(m_file);
        QCOMPARE(int(history->entries().size()), 1);
        history->add(entry("a", "acknowledged", AlarmState::ActiveAcknowledged));
        history.reset();
        history = open(m_file);
        QCOMPARE(int(history->entries().size()), 2);
        QCOMPARE(m_problems, QStringList());
    }

    void whatIsNoEntryIsReported()
    {
        const QByteArray whole = entry("a", "began", AlarmState::ActiveUnacknowledged).toJson();
        write("not json\n" + whole + "{}\n");
        const auto history = open(m_file);
        QCOMPARE(int(history->entries().size()), 1);
        QCOMPARE(m_problems, QStringList(m_file + ": warning: 2 lines are no entries of alarms, "
                                                  "and were left out"));
    }

    void secondPanelIsToldAndWritesNothing()
    {
        const auto first = open(m_file);
        const auto second = open(m_file);
        QCOMPARE(m_problems,
                 QStringList(m_file + ": warning: another panel that runs keeps its alarms here, "
                                      "so those of this one are not kept"));
        second->add(entry("a", "began", AlarmState::ActiveUnacknowledged));
        second->save();
        QVERIFY(contentOf(m_file).isEmpty());
    }

    void missingFolderIsReportedOnceAndTheRestIsWrittenLater()
    {
        const QString folder = m_folder.filePath("gone");
        QVERIFY(QDir().mkdir(folder));
        const auto history = open(folder + "/x.alarms.jsonl");
        QVERIFY(QDir(folder).removeRecursively());
        for (const char* id : {"a", "b"}) {
            history->add(entry(id, "began", AlarmState::ActiveUnacknowledged));
            history->save();
        }
        QCOMPARE(m_problems.size(), 1);
        QVERIFY2(m_problems[0].contains("the alarms cannot be saved: "), qPrintable(m_problems[0]));
        QVERIFY(QDir().mkdir(folder));
        history->add(entry("c", "began", AlarmState::ActiveUnacknowledged));
        history->save();
        QCOMPARE(contentOf(folder + "/x.alarms.jsonl").count('\n'), 3);
    }

    void fullDiskIsReportedOnceAndLeavesNoHalfLine()
    {
        const auto history = open(m_file);
        const auto add = [&history](const char* id) {
            history->add(entry(id, "began", AlarmState::ActiveUnacknowledged));
            history->save();
        };
        add("a");
        const QByteArray before = contentOf(m_file);
        QCOMPARE(before.count('\n'), 1);
        {
            const FullDisk full(before.size() + 5);
            add("b");
            add("c");
            QCOMPARE(contentOf(m_file), before);
        }
        QCOMPARE(m_problems.size(), 1);
        QVERIFY2(m_problems[0].contains("the alarms cannot be saved: "), qPrintable(m_problems[0]));
        QCOMPARE(int(history->entries().size()), 3); // The panel knows them all the same.
        add("d");
        QCOMPARE(contentOf(m_file).count('\n'), 4);
        {
            const FullDisk full(contentOf(m_file).size());
            add("e");
        }
        QCOMPARE(m_problems.size(), 2); // The next time that the disk is full.
    }

    void whatCouldNotBeWrittenIsTriedAgainByItself()
    {
        const auto history = open(m_file);
        {
            const FullDisk full(0);
            history->add(entry("a", "began", AlarmState::ActiveUnacknowledged));
            QTRY_COMPARE(m_problems.size(), 1);
        }
        QTRY_COMPARE_WITH_TIMEOUT(contentOf(m_file).count('\n'), 1, 10 * AlarmHistory::kRetryMs);
    }

    void fullDiskKeepsTheFileThatWouldBeCut()
    {
        {
            const auto history = open(m_file);
            for (int i = 0; i < 2 * AlarmHistory::kMaxEntries; ++i) {
                history->add(entry("a", "began", AlarmState::ActiveUnacknowledged, i));
            }
        }
        const QByteArray before = contentOf(m_file);
        const auto history = open(m_file);
        for (int i = 0; i < AlarmHistory::kMaxEntries; ++i) {
            history->add(entry("b", "began", AlarmState::ActiveUnacknowledged, i));
        }
        {
            const FullDisk full(1000);
            history->save();
        }
        QCOMPARE(m_problems.size(), 1);
        QVERIFY(contentOf(m_file) == before);
    }

    void whatIsNoFileIsNotWritten()
    {
        const auto history = open("/dev/full");
        QCOMPARE(m_problems.size(), 1); // It is not a regular file.
        history->add(entry("a", "began", AlarmState::ActiveUnacknowledged));
        history->save();
        QCOMPARE(int(history->entries().size()), 1);
    }

    void tableHoldsTextsInQuotesAndNoFormulas()
    {
        const auto history = open({});
        AlarmEntry one = entry("a", "began", AlarmState::ActiveUnacknowledged);
        one.text = "Say \"hot\", please";
        one.detail = "=1+1";
        history->add(one);
        const QList<QByteArray> lines = history->toCsv().split('\n');
        QCOMPARE(lines.size(), 3);
        QCOMPARE(lines[0], QByteArray("time,event,priority,text,device,state,detail,since,shelved "
                                      "until,alarm"));
        QVERIFY(lines[1].contains("\"Say \"\"hot\"\", please\",\"boiler\","));
        QVERIFY(lines[1].contains("\"'=1+1\""));
    }
};

NORVO_TEST(tst_AlarmHistory)

#include "tst_AlarmHistory.moc"
