// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/Alarm.h"

#include <QHash>

#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

namespace norvo {

/// The states of all alarms of a panel, and how they follow from one another:
///
///     Normal                -- begins -->       ActiveUnacknowledged
///     ActiveUnacknowledged  -- acknowledged --> ActiveAcknowledged
///     ActiveUnacknowledged  -- ends -->         ClearedUnacknowledged
///     ActiveAcknowledged    -- ends -->         Normal
///     ClearedUnacknowledged -- acknowledged --> Normal
///     ClearedUnacknowledged -- begins -->       ActiveUnacknowledged
///
/// It has no clock: whoever calls says when it is. Steady times never go back.
class AlarmModel
{
public:
    using Listener = std::function<void(const AlarmEvent& event)>;

    static constexpr int kMaxAlarms = 40000; ///< Several for each device of the largest panel.
    static constexpr Duration kMaxShelf = std::chrono::hours(24);
    static constexpr int kBurstGapMs = 1000;

    /// Hears of everything that happens; must not call the model.
    void setListener(Listener listener) { m_listener = std::move(listener); }

    /// The number of the alarm; that of the one with this id, which then gets the new definition.
    /// -1: there are too many.
    int add(const AlarmDefinition& definition);
    /// The alarm is not defined any more: once it is normal, its number may be another's.
    void retire(int alarm) { m_retired.insert(alarm); }
    /// The number of the alarm of this id; -1: there is none.
    int find(const QString& id) const { return m_byId.value(id, -1); }
    /// Takes over what an alarm was when the panel last ran. It tells the listener nothing.
    void restore(int alarm, AlarmState state, AlarmMoment since, AlarmMoment shelvedUntil,
                 const QString& detail);

    const std::deque<Alarm>& alarms() const { return m_alarms; }
    const Alarm& at(int alarm) const { return m_alarms[size_t(alarm)]; }
    bool isQuiet() const { return m_shown == 0; } ///< No alarm is shown.

    /// Whether what the alarm is about is the case; its delays run from here.
    void setCondition(int alarm, bool isOn, AlarmMoment now, const QString& detail = {});
    void setPriority(int alarm, AlarmPriority priority);
    void acknowledge(int alarm, AlarmMoment now); ///< Nothing where there is nothing to.
    /// It is not shown for so long, at most kMaxShelf; nothing for less than 1 ms.
    void shelve(int alarm, Duration time, AlarmMoment now);
    void unshelve(int alarm, AlarmMoment now);

    /// Does what is due by now.
    void advance(AlarmMoment now);
    /// The steady time at which advance() has something to do; none: nothing is pending.
    std::optional<qint64> nextDue() const;

private:
    struct Pending
    {
        qint64 change = 0; ///< When it begins or ends; 0: nothing is pending.
        bool isOn = false; ///< The condition, as last said.
        QString detail;
    };

    enum class Due { Change, ShelfEnd };

    int freeNumber();
    void begin(int alarm, AlarmMoment now);
    void end(int alarm, AlarmMoment now);
    void enter(int alarm, AlarmState state, AlarmEvent::Kind kind, AlarmMoment now);
    void schedule(int alarm, qint64 when);
    void count(bool wasShown, bool isShown);

    Listener m_listener;
    std::deque<Alarm> m_alarms; ///< References to them stay good.
    std::vector<Pending> m_pending;
    QHash<QString, int> m_byId;
    std::set<int> m_retired;
    std::set<std::tuple<qint64, int, Due>> m_due; ///< Steady time, and alarm.
    int m_shown = 0;
    int m_burst = 0;
    qint64 m_lastBegin = 0; ///< Steady.
};

} // namespace norvo
