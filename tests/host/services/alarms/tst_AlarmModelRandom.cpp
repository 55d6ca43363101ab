// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmModel.h"

#include "Seed.h"
#include "TestMain.h"

#include <random>

using namespace norvo;

namespace {

constexpr int kAlarms = 12;
constexpr int kEvents = 100000;

/// What an alarm is, said as plainly as can be: four facts, and what the last value was and since
/// when it says so.
struct PlainAlarm
{
    int delay = 0;
    int offDelay = 0;
    bool isBeyond = false;
    qint64 beyondSince = 0;
    bool isOn = false;
    bool isUnknown = false; ///< Nobody has said that he knows of it.
    qint64 shelfEnd = 0;
    qint64 began = 0;

    bool isSeen() const { return (isOn || isUnknown) && shelfEnd == 0; }

    void look(qint64 now)
    {
        if (shelfEnd > 0 && now >= shelfEnd) {
            shelfEnd = 0;
        }
        const qint64 wait = isBeyond ? delay : offDelay;
        if (isBeyond != isOn && now - beyondSince >= wait) {
            isOn = isBeyond;
            if (isOn) {
                isUnknown = true;
                began = now;
            }
        }
    }

    AlarmState state() const
    {
        return isOn && isUnknown ? AlarmState::ActiveUnacknowledged
               : isOn            ? AlarmState::ActiveAcknowledged
               : isUnknown       ? AlarmState::ClearedUnacknowledged
                                 : AlarmState::Normal;
    }
};

} // namespace

class tst_AlarmModelRandom : public QObject
{
    Q_OBJECT

    AlarmModel m_model;
    std::vector<PlainAlarm> m_plain{std::size_t(kAlarms)};
    qint64 m_now = 1000;

    AlarmMoment now() const { return {m_now, m_now}; }

    void happen(int what, int alarm, int time)
    {
        PlainAlarm& plain = m_plain[std::size_t(alarm)];
        if (what < 6) {
            const bool isBeyond = what % 2 == 0;
            m_model.setCondition(alarm, isBeyond, now());
            if (plain.isBeyond != isBeyond) {
                plain.isBeyond = isBeyond;
                plain.beyondSince = m_now;
            }
        } else if (what == 6) {
            m_model.acknowledge(alarm, now());
            plain.isUnknown = false;
        } else if (what == 7) {
            m_model.shelve(alarm, Duration(time), now());
            plain.shelfEnd = m_now + time;
        } else if (what == 8) {
            m_model.unshelve(alarm, now());
            plain.shelfEnd = 0;
        } else {
            m_now += time % 90;
            m_model.advance(now());
        }
        for (PlainAlarm& one : m_plain) {
            one.look(m_now);
        }
    }

    QString difference() const
    {
        bool isQuiet = true;
        for (int i = 0; i < kAlarms; ++i) {
            const PlainAlarm& plain = m_plain[std::size_t(i)];
            const Alarm& alarm = m_model.at(i);
            isQuiet = isQuiet && !plain.isSeen();
            if (alarm.state != plain.state() || alarm.isShown() != plain.isSeen() ||
                alarm.since.steady != plain.began) {
                return QString("alarm %1: state %2, not %3; since %4, not %5")
                    .arg(i)
                    .arg(int(alarm.state))
                    .arg(int(plain.state()))
                    .arg(alarm.since.steady)
                    .arg(plain.began);
            }
        }
        return isQuiet == m_model.isQuiet() ? QString() : "quiet or not";
    }

private slots:
    void randomWalkAgreesWithAPlainModel()
    {
        std::mt19937 random(norvo::testSeed());
        const auto any = [&random](int below) { return int(random() % unsigned(below)); };
        for (int i = 0; i < kAlarms; ++i) {
            PlainAlarm& plain = m_plain[std::size_t(i)];
            plain.delay = i % 3 == 0 ? 0 : any(200);
            plain.offDelay = i % 4 == 0 ? 0 : any(200);
            AlarmDefinition definition{QString::number(i), {}, {}};
            definition.delay = Duration(plain.delay);
            definition.offDelay = Duration(plain.offDelay);
            m_model.add(definition);
        }
        int states[4] = {};
        for (int i = 0; i < kEvents; ++i) {
            const int what = any(14);
            const int alarm = any(kAlarms);
            happen(what, alarm, 1 + any(400));
            const QString wrong = difference();
            QVERIFY2(wrong.isEmpty(), qPrintable(QString("event %1: ").arg(i) + wrong));
            ++states[int(m_model.at(alarm).state)];
        }
        for (const int seen : states) { // The walk has been everywhere.
            QVERIFY(seen > kEvents / 100);
        }
    }
};

NORVO_APPLESS_TEST(tst_AlarmModelRandom)

#include "tst_AlarmModelRandom.moc"
