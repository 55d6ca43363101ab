// SPDX-License-Identifier: GPL-3.0-or-later

#include "AlarmPanel.h"
#include "TestMain.h"

using norvo::AlarmPriority;
using norvo::AlarmService;
using State = norvo::AlarmState;

/// Alarms of a running panel.
class tst_AlarmService : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

private slots:
    void valueBeyondItsLimitIsAnAlarm()
    {
        AlarmPanel panel;
        panel.start();
        emit panel.talker().output(80.0);
        QCOMPARE(panel.alarm().state, State::Normal);
        emit panel.talker().output(81.5);
        QCOMPARE(panel.alarm().state, State::ActiveUnacknowledged);
        QCOMPARE(panel.alarm().detail, QString("81.5"));
        emit panel.talker().output(qQNaN());
        QCOMPARE(panel.alarm().state, State::ActiveUnacknowledged);
        emit panel.talker().output(79.0);
        QCOMPARE(panel.alarm().state, State::ClearedUnacknowledged);
    }

    void delayRunsByItself()
    {
        norvo::AlarmSetting late = AlarmPanel::above80();
        late.delay = norvo::Duration(100);
        AlarmPanel panel;
        panel.start({late});
        emit panel.talker().output(90.0);
        QCOMPARE(panel.alarm().state, State::Normal);
        QTRY_COMPARE(panel.alarm().state, State::ActiveUnacknowledged);
    }

    void alertOfAReadoutIsAnAlarmUntilAValueComesWithoutIt_data()
    {
        QTest::addColumn<QByteArray>("alert");
        QTest::newRow("time-out") << QByteArray("timeoutAlert");
        QTest::newRow("lower threshold") << QByteArray("minThresholdAlert");
        QTest::newRow("upper threshold") << QByteArray("maxThresholdAlert");
    }

    void alertOfAReadoutIsAnAlarmUntilAValueComesWithoutIt()
    {
        QFETCH(QByteArray, alert);
        AlarmPanel panel;
        panel.start();
        const QString id = "talker." + alert + "()";
        const auto raise = [&] { QMetaObject::invokeMethod(&panel.talker(), alert.constData()); };
        QCOMPARE(panel.alarm(id).state, State::Normal);
        raise();
        QCOMPARE(panel.alarm(id).state, State::ActiveUnacknowledged);
        emit panel.talker().output(3.0);
        raise();
        QTest::qWait(20);
        QCOMPARE(panel.alarm(id).state, State::ActiveUnacknowledged);
        emit panel.talker().output(3.0);
        QTRY_COMPARE(panel.alarm(id).state, State::ClearedUnacknowledged);
    }

    void alarmAlertIsNoSecondAlarm()
    {
        AlarmPanel panel;
        panel.start();
        QCOMPARE(panel.service.model().find("talker.alarmAlert()"), -1);
    }

    void deviceThatFailedIsAnAlarm()
    {
        AlarmPanel panel;
        panel.start({}, {{"port", "broken"}});
        const norvo::Alarm& alarm = panel.alarm("port failed");
        QCOMPARE(alarm.state, State::ActiveUnacknowledged);
        QVERIFY(alarm.definition.priority == AlarmPriority::High);
        QVERIFY2(alarm.detail.contains("no such port"), qPrintable(alarm.detail));
    }

    void lostConnectionIsAnAlarmUntilItIsBack()
    {
        AlarmPanel panel;
        panel.start({}, {{"plc", "link"}});
        Link& link = panel.listened.device<Link>("plc");
        link.setConnected(true);
        QCOMPARE(panel.alarm("plc lost").state, State::Normal);
        link.reportFault("cable pulled");
        link.setConnected(false);
        QCOMPARE(panel.alarm("plc lost").state, State::Normal); // It may be back at once.
        QTRY_COMPARE(panel.alarm("plc lost").state, State::ActiveUnacknowledged);
        QCOMPARE(panel.alarm("plc lost").detail, QString("cable pulled"));
        link.setConnected(true);
        QCOMPARE(panel.alarm("plc lost").state, State::ClearedUnacknowledged);
    }

    void statesLiveAcrossARestart()
    {
        const QString file = m_folder.filePath("a.alarms.jsonl");
        norvo::AlarmSetting other = AlarmPanel::above80();
        other.id = "talker.output above 60";
        other.limit.number = 60;
        norvo::AlarmSetting gone = other;
        gone.id = "talker.output above 50";
        {
            AlarmPanel panel(file);
            panel.start({AlarmPanel::above80(), other, gone});
            emit panel.talker().output(90.0);
            panel.service.acknowledge({panel.service.model().find(other.id)});
            emit panel.talker().output(70.0);
            QCOMPARE(panel.alarm().state, State::ClearedUnacknowledged);
        }
        AlarmPanel panel(file);
        panel.start({AlarmPanel::above80(), other});
        QCOMPARE(panel.alarm().state, State::ClearedUnacknowledged);
        QCOMPARE(panel.alarm(other.id).state, State::ActiveAcknowledged);
        QCOMPARE(panel.alarm(gone.id).state, State::ClearedUnacknowledged);
        emit panel.talker().output(70.0);
        QCOMPARE(panel.alarm(other.id).state, State::ActiveAcknowledged);
        emit panel.talker().output(10.0);
        QCOMPARE(panel.alarm(other.id).state, State::Normal);
    }

    void shelfAcrossARestartGoesByTheClockWithinItsBounds_data()
    {
        QTest::addColumn<qint64>("hoursLeft"); // By the clock as it is now.
        QTest::addColumn<int>("hours");
        QTest::newRow("as it was") << 2LL << 2;
        QTest::newRow("set back by days") << 50LL << 24;
        QTest::newRow("set forward") << -1LL << 0;
    }

    void shelfAcrossARestartGoesByTheClockWithinItsBounds()
    {
        QFETCH(qint64, hoursLeft);
        QFETCH(int, hours);
        const qint64 hour = 3600000;
        const QString file =
            m_folder.filePath(QString(QTest::currentDataTag()) + ".shelf.alarms.jsonl");
        {
            norvo::AlarmHistory history(file);
            history.read();
            const qint64 now = QDateTime::currentMSecsSinceEpoch();
            history.add({now, "shelved", AlarmPanel::above80().id, "talker",
                         norvo::AlarmPriority::High, "Too hot", "", State::ActiveUnacknowledged,
                         now, now + hoursLeft * hour});
        }
        AlarmPanel panel(file);
        panel.start();
        const qint64 left = panel.alarm().shelvedUntil.steady - panel.service.now().steady;
        QVERIFY2(left <= hours * hour && left > (hours - 1) * hour,
                 qPrintable(QString::number(left)));
        if (hours == 0) {
            QTRY_VERIFY(!panel.alarm().isShelved());
        }
    }

    void deviceThatRunsAgainHasNoAlarm()
    {
        const QString file = m_folder.filePath("b.alarms.jsonl");
        {
            AlarmPanel panel(file);
            panel.start({}, {{"port", "broken"}});
        }
        AlarmPanel panel(file);
        panel.start({}, {{"port", "talker"}});
        QCOMPARE(panel.alarm("port failed").state, State::ClearedUnacknowledged);
    }

    void whatAPanelDoesAtItsEndIsNoAlarm()
    {
        AlarmPanel panel;
        panel.start();
        panel.service.stop();
        emit panel.talker().output(90.0);
        QCOMPARE(panel.alarm().state, State::Normal);
    }

    void soundLastsUntilItIsAcknowledgedOrSilenced()
    {
        AlarmPanel panel;
        panel.start();
        QSignalSpy changed(&panel.service, &AlarmService::changed);
        emit panel.talker().timeoutAlert();
        QTRY_VERIFY(!changed.isEmpty());
        QVERIFY(!panel.service.isSounding()); // What comes by itself is quiet.
        emit panel.talker().output(90.0);
        QTRY_VERIFY(panel.service.isSounding());
        panel.service.silence();
        QTRY_VERIFY(!panel.service.isSounding());
        emit panel.talker().output(10.0);
        emit panel.talker().output(90.0);
        QTRY_VERIFY(panel.service.isSounding()); // It has begun again.
        panel.service.acknowledge({panel.service.model().find("talker.output above 80")});
        QTRY_VERIFY(!panel.service.isSounding());
    }

    void changesAreToldInTimeAndNotTooOften()
    {
        AlarmPanel panel;
        panel.start();
        QSignalSpy changed(&panel.service, &AlarmService::changed);
        QElapsedTimer time;
        time.start();
        int events = 0;
        while (events < 10000) {
            emit panel.talker().output(events % 2 == 0 ? 90.0 : 10.0);
            ++events;
            if (events % 100 == 0) {
                QCoreApplication::processEvents();
            }
        }
        QVERIFY(changed.size() <= time.elapsed() / AlarmService::kTellDelayMs + 1);
        QTRY_VERIFY(!changed.isEmpty());
        QCOMPARE(int(panel.service.history().entries().size()), 10000);
    }

    void operatorsDoingsAreTold()
    {
        AlarmPanel panel;
        panel.start();
        QSignalSpy operated(&panel.service, &AlarmService::operated);
        emit panel.talker().output(90.0);
        const int alarm = panel.service.model().find("talker.output above 80");
        panel.service.acknowledge({alarm});
        panel.service.acknowledge({alarm});
        panel.service.shelve({alarm}, std::chrono::minutes(1));
        panel.service.unshelve({alarm});
        QCOMPARE(operated.size(), 3);
        QCOMPARE(operated[0], (QVariantList{"acknowledged", "talker.output above 80"}));
        QCOMPARE(operated[1][0].toString(), QString("shelved"));
        QCOMPARE(operated[2][0].toString(), QString("unshelved"));
    }
};

NORVO_TEST(tst_AlarmService)

#include "tst_AlarmService.moc"
