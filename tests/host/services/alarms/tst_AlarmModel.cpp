// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmModel.h"

#include "TestMain.h"

using namespace norvo;
using State = AlarmState;

/// Every transition of the table, delays, shelves and marks, with made-up time.
class tst_AlarmModel : public QObject
{
    Q_OBJECT

    AlarmModel* m_model = nullptr;
    QStringList m_heard;
    int m_alarm = -1;
    qint64 m_now = 0;

    AlarmMoment now() const { return {m_now, m_now + 5000000}; }
    State state() const { return m_model->at(m_alarm).state; }
    void set(bool isOn) { m_model->setCondition(m_alarm, isOn, now()); }
    void acknowledge() { m_model->acknowledge(m_alarm, now()); }
    void pass(qint64 milliseconds)
    {
        m_now += milliseconds;
        m_model->advance(now());
    }
    int add(const QString& id, Duration delay = {}, Duration offDelay = {})
    {
        AlarmDefinition definition{id, "device", id};
        definition.delay = delay;
        definition.offDelay = offDelay;
        return m_model->add(definition);
    }

private slots:
    void init()
    {
        m_now = 1000;
        m_heard.clear();
        m_model = new AlarmModel;
        m_model->setListener([this](const AlarmEvent& event) {
            static const char* const kinds[] = {"began", "ended", "acknowledged", "shelved",
                                                "unshelved"};
            m_heard.append(event.alarm.definition.id + ' ' + kinds[int(event.kind)]);
        });
        m_alarm = add("a");
    }

    void cleanup() { delete m_model; }

    void normalBegins()
    {
        QCOMPARE(state(), State::Normal);
        QVERIFY(m_model->isQuiet());
        set(true);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        QCOMPARE(m_model->at(m_alarm).since.steady, m_now);
        QCOMPARE(m_model->at(m_alarm).since.wall, m_now + 5000000);
        QVERIFY(!m_model->isQuiet());
        QCOMPARE(m_heard, QStringList("a began"));
    }

    void activeIsAcknowledged()
    {
        set(true);
        acknowledge();
        QCOMPARE(state(), State::ActiveAcknowledged);
        acknowledge();
        set(true);
        QCOMPARE(m_heard, (QStringList{"a began", "a acknowledged"}));
        QVERIFY(!m_model->isQuiet());
    }

    void whatWentStaysUntilItIsAcknowledged()
    {
        set(true);
        set(false);
        QCOMPARE(state(), State::ClearedUnacknowledged);
        QVERIFY(!m_model->isQuiet());
        acknowledge();
        QCOMPARE(state(), State::Normal);
        QVERIFY(m_model->isQuiet());
        QCOMPARE(m_heard, (QStringList{"a began", "a ended", "a acknowledged"}));
    }

    void acknowledgedGoesWhenItEnds()
    {
        set(true);
        acknowledge();
        set(false);
        QCOMPARE(state(), State::Normal);
        QVERIFY(m_model->isQuiet());
    }

    void clearedBeginsAgain()
    {
        set(true);
        set(false);
        m_now += 70;
        set(true);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        QCOMPARE(m_model->at(m_alarm).since.steady, m_now);
        acknowledge();
        set(false);
        QCOMPARE(state(), State::Normal);
    }

    void nothingIsAcknowledgedInQuiet()
    {
        acknowledge();
        QCOMPARE(state(), State::Normal);
        QCOMPARE(m_heard, QStringList());
    }

    void delayPassesBeforeItBegins()
    {
        m_alarm = add("late", Duration(2000));
        set(true);
        QCOMPARE(*m_model->nextDue(), m_now + 2000);
        pass(1999);
        QCOMPARE(state(), State::Normal);
        pass(1);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        QVERIFY(!m_model->nextDue());
    }

    void shortExcursionIsNoAlarm()
    {
        m_alarm = add("late", Duration(2000));
        set(true);
        pass(1500);
        set(false);
        pass(5000);
        QCOMPARE(state(), State::Normal);
        set(true);
        pass(1999); // Counted again from here.
        QCOMPARE(state(), State::Normal);
    }

    void offDelayPassesBeforeItEnds()
    {
        m_alarm = add("slow", {}, Duration(300));
        set(true);
        set(false);
        pass(299);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        set(true);
        pass(300);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        set(false);
        pass(300);
        QCOMPARE(state(), State::ClearedUnacknowledged);
    }

    void repeatedConditionDoesNotStartTheDelayAgain()
    {
        m_alarm = add("late", Duration(2000));
        set(true);
        pass(1000);
        set(true);
        pass(1000);
        QCOMPARE(state(), State::ActiveUnacknowledged);
    }

    void shelvedIsNotShownUntilItsEnd()
    {
        set(true);
        m_model->shelve(m_alarm, std::chrono::minutes(5), now());
        QVERIFY(m_model->isQuiet());
        QVERIFY(!m_model->at(m_alarm).isShown());
        QCOMPARE(m_model->at(m_alarm).shelvedUntil.wall, m_now + 5000000 + 300000);
        set(false);
        set(true);
        QVERIFY(m_model->isQuiet());
        pass(299999);
        QVERIFY(m_model->isQuiet());
        pass(1);
        QVERIFY(!m_model->isQuiet());
        QCOMPARE(state(), State::ActiveUnacknowledged);
        QCOMPARE(m_heard.constLast(), QString("a unshelved"));
    }

    void clockThatIsSetMovesNeitherDelayNorShelf()
    {
        m_alarm = add("late", Duration(2000));
        set(true);
        for (const qint64 wall : {0LL, 99000000000LL, -5LL}) {
            m_now += 600;
            m_model->advance({m_now, wall});
            QCOMPARE(state(), State::Normal);
        }
        m_model->advance({m_now + 200, 0});
        QCOMPARE(state(), State::ActiveUnacknowledged);
        m_model->shelve(m_alarm, Duration(1000), {m_now, 0});
        m_model->advance({m_now + 999, 99000000000LL});
        QVERIFY(m_model->at(m_alarm).isShelved());
        m_model->advance({m_now + 1000, -99000000000LL});
        QVERIFY(!m_model->at(m_alarm).isShelved());
    }

    void shelfEndsByHandAndIsBounded()
    {
        set(true);
        m_model->shelve(m_alarm, std::chrono::hours(1000), now());
        QCOMPARE(m_model->at(m_alarm).shelvedUntil.steady, m_now + 24 * 3600 * 1000);
        m_model->unshelve(m_alarm, now());
        QVERIFY(!m_model->isQuiet() && !m_model->nextDue());
        m_model->shelve(m_alarm, Duration(0), now());
        QVERIFY(!m_model->isQuiet());
    }

    void shelfAndDelayMayEndTogether()
    {
        m_alarm = add("late", Duration(2000));
        set(true);
        m_model->shelve(m_alarm, Duration(2000), now());
        m_model->shelve(m_alarm, Duration(3000), now());
        pass(2000);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        QVERIFY(m_model->isQuiet());
        pass(1000);
        QVERIFY(!m_model->isQuiet());
    }

    void firstIsMarkedUntilAllIsQuiet()
    {
        const int other = add("b");
        set(true);
        m_model->setCondition(other, true, now());
        QVERIFY(m_model->at(m_alarm).isFirst && !m_model->at(other).isFirst);
        m_model->acknowledge(m_alarm, now());
        set(false);
        QVERIFY(!m_model->at(m_alarm).isFirst);
        set(true);
        QVERIFY(!m_model->at(m_alarm).isFirst); // Not all was quiet.
        acknowledge();
        set(false);
        m_model->setCondition(other, false, now());
        m_model->acknowledge(other, now());
        QVERIFY(m_model->isQuiet());
        m_model->setCondition(other, true, now());
        QVERIFY(m_model->at(other).isFirst);
    }

    void alarmsThatBeginTogetherAreOneBurst()
    {
        const int second = add("b");
        const int third = add("c");
        set(true);
        m_now += 1000;
        m_model->setCondition(second, true, now());
        m_now += 1001;
        m_model->setCondition(third, true, now());
        QCOMPARE(m_model->at(second).burst, m_model->at(m_alarm).burst);
        QVERIFY(m_model->at(third).burst != m_model->at(second).burst);
    }

    void restoredStateHoldsUntilAValueCame()
    {
        m_model->restore(m_alarm, State::ActiveAcknowledged, {500, 5000500}, {}, "81");
        QVERIFY(m_model->at(m_alarm).isFromBefore && !m_model->isQuiet());
        set(true);
        QCOMPARE(state(), State::ActiveAcknowledged); // It does not come back.
        QVERIFY(!m_model->at(m_alarm).isFromBefore);
        set(false);
        QCOMPARE(state(), State::Normal);
        QCOMPARE(m_heard, QStringList("a ended"));
    }

    void restoredShelfGoesOn()
    {
        m_model->restore(m_alarm, State::ActiveUnacknowledged, {500, 5000500},
                         {m_now + 100, 5000100}, {});
        QVERIFY(m_model->isQuiet());
        pass(100);
        QVERIFY(!m_model->isQuiet());
    }

    void sameIdIsTheSameAlarm()
    {
        set(true);
        QCOMPARE(add("a"), m_alarm);
        QCOMPARE(state(), State::ActiveUnacknowledged);
        QCOMPARE(m_model->find("a"), m_alarm);
        QCOMPARE(m_model->find("x"), -1);
    }

    void numberOfARetiredAlarmIsTheNextOnes()
    {
        m_model->setCondition(m_alarm, true, now(), "81");
        acknowledge();
        set(false);
        m_model->retire(m_alarm);
        QCOMPARE(add("b"), m_alarm);
        QCOMPARE(m_model->find("a"), -1);
        QCOMPARE(m_model->find("b"), m_alarm);
        const Alarm& next = m_model->at(m_alarm);
        QCOMPARE(next.definition.id, QString("b"));
        QCOMPARE(next.since.steady, qint64(0));
        QCOMPARE(next.detail, QString());
        QCOMPARE(next.burst, 0);
        QVERIFY(!next.isFirst);
        QVERIFY(add("a") != m_alarm);
    }

    void retiredAlarmThatIsNotNormalKeepsItsNumber()
    {
        set(true);
        m_model->retire(m_alarm);
        QVERIFY(add("b") != m_alarm);
        QCOMPARE(m_model->find("a"), m_alarm);
        acknowledge();
        set(false);
        QCOMPARE(add("c"), m_alarm);
    }

    void retiredAlarmThatIsShelvedKeepsItsNumber()
    {
        set(true);
        m_model->shelve(m_alarm, Duration(100), now());
        acknowledge();
        set(false);
        QCOMPARE(state(), State::Normal);
        m_model->retire(m_alarm);
        QVERIFY(add("b") != m_alarm);
        pass(100);
        QCOMPARE(add("c"), m_alarm);
    }

    void retiredAlarmThatIsDefinedAgainStays()
    {
        m_model->retire(m_alarm);
        QCOMPARE(add("a"), m_alarm);
        QVERIFY(add("b") != m_alarm);
    }

    void alarmsAreBounded()
    {
        for (int i = 1; i < AlarmModel::kMaxAlarms; ++i) {
            m_model->add({QString::number(i), {}, {}});
        }
        QCOMPARE(m_model->add({"one more", {}, {}}), -1);
    }
};

NORVO_APPLESS_TEST(tst_AlarmModel)

#include "tst_AlarmModel.moc"
