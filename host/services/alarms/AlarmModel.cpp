// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmModel.h"

#include <algorithm>

namespace norvo {

int AlarmModel::add(const AlarmDefinition& definition)
{
    const int known = find(definition.id);
    if (known >= 0) {
        m_alarms[size_t(known)].definition = definition;
        m_retired.erase(known);
        return known;
    }
    const int number = freeNumber();
    if (number >= 0) {
        m_alarms[size_t(number)].definition = definition;
        m_byId.insert(definition.id, number);
    }
    return number;
}

int AlarmModel::freeNumber()
{
    for (const int retired : m_retired) {
        Alarm& one = m_alarms[size_t(retired)];
        if (one.state == AlarmState::Normal && !one.isShelved()) {
            schedule(retired, 0);
            m_byId.remove(one.definition.id);
            m_retired.erase(retired);
            one = {};
            m_pending[size_t(retired)] = {};
            return retired;
        }
    }
    if (m_alarms.size() >= size_t(kMaxAlarms)) {
        return -1;
    }
    m_alarms.emplace_back();
    m_pending.emplace_back();
    return int(m_alarms.size()) - 1;
}

void AlarmModel::restore(int alarm, AlarmState state, AlarmMoment since, AlarmMoment shelvedUntil,
                         const QString& detail)
{
    Alarm& one = m_alarms[size_t(alarm)];
    const bool wasShown = one.isShown();
    one.state = state;
    one.since = since;
    one.detail = detail;
    one.shelvedUntil = shelvedUntil;
    one.isFromBefore = true;
    m_pending[size_t(alarm)].isOn = one.isActive();
    if (one.isShelved()) {
        m_due.emplace(shelvedUntil.steady, alarm, Due::ShelfEnd);
    }
    count(wasShown, one.isShown());
}

void AlarmModel::setCondition(int alarm, bool isOn, AlarmMoment now, const QString& detail)
{
    Alarm& one = m_alarms[size_t(alarm)];
    Pending& pending = m_pending[size_t(alarm)];
    one.isFromBefore = false;
    if (isOn) {
        pending.detail = detail;
    }
    if (pending.isOn == isOn) {
        return;
    }
    pending.isOn = isOn;
    if (isOn == one.isActive()) { // Back before the delay was over.
        schedule(alarm, 0);
        return;
    }
    const Duration delay = isOn ? one.definition.delay : one.definition.offDelay;
    if (delay.count() > 0) {
        schedule(alarm, now.steady + delay.count());
    } else if (isOn) {
        begin(alarm, now);
    } else {
        end(alarm, now);
    }
}

void AlarmModel::setPriority(int alarm, AlarmPriority priority)
{
    m_alarms[size_t(alarm)].definition.priority = priority;
}

void AlarmModel::begin(int alarm, AlarmMoment now)
{
    Alarm& one = m_alarms[size_t(alarm)];
    one.since = now;
    one.detail = m_pending[size_t(alarm)].detail;
    if (m_burst == 0 || now.steady - m_lastBegin > kBurstGapMs) {
        ++m_burst;
    }
    m_lastBegin = now.steady;
    one.burst = m_burst;
    one.isFirst = !one.isShelved() && (m_shown == 0 || (one.isFirst && one.isShown()));
    enter(alarm, AlarmState::ActiveUnacknowledged, AlarmEvent::Kind::Began, now);
}

void AlarmModel::end(int alarm, AlarmMoment now)
{
    const bool isKnown = at(alarm).state == AlarmState::ActiveAcknowledged;
    enter(alarm, isKnown ? AlarmState::Normal : AlarmState::ClearedUnacknowledged,
          AlarmEvent::Kind::Ended, now);
}

void AlarmModel::acknowledge(int alarm, AlarmMoment now)
{
    const AlarmState state = at(alarm).state;
    if (state == AlarmState::ActiveUnacknowledged) {
        enter(alarm, AlarmState::ActiveAcknowledged, AlarmEvent::Kind::Acknowledged, now);
    } else if (state == AlarmState::ClearedUnacknowledged) {
        enter(alarm, AlarmState::Normal, AlarmEvent::Kind::Acknowledged, now);
    }
}

void AlarmModel::enter(int alarm, AlarmState state, AlarmEvent::Kind kind, AlarmMoment now)
{
    Alarm& one = m_alarms[size_t(alarm)];
    const bool wasShown = one.isShown();
    one.state = state;
    one.isFirst = one.isFirst && state != AlarmState::Normal;
    count(wasShown, one.isShown());
    if (m_listener) {
        m_listener({kind, now, one});
    }
}

void AlarmModel::shelve(int alarm, Duration time, AlarmMoment now)
{
    if (time.count() < 1) {
        return;
    }
    Alarm& one = m_alarms[size_t(alarm)];
    const bool wasShown = one.isShown();
    m_due.erase({one.shelvedUntil.steady, alarm, Due::ShelfEnd});
    const qint64 span = std::min(time, kMaxShelf).count();
    one.shelvedUntil = {now.steady + span, now.wall + span};
    one.isFirst = false;
    m_due.emplace(one.shelvedUntil.steady, alarm, Due::ShelfEnd);
    count(wasShown, false);
    if (m_listener) {
        m_listener({AlarmEvent::Kind::Shelved, now, one});
    }
}

void AlarmModel::unshelve(int alarm, AlarmMoment now)
{
    Alarm& one = m_alarms[size_t(alarm)];
    if (!one.isShelved()) {
        return;
    }
    m_due.erase({one.shelvedUntil.steady, alarm, Due::ShelfEnd});
    one.shelvedUntil = {};
    count(false, one.isShown());
    if (m_listener) {
        m_listener({AlarmEvent::Kind::Unshelved, now, one});
    }
}

void AlarmModel::advance(AlarmMoment now)
{
    while (!m_due.empty() && std::get<qint64>(*m_due.begin()) <= now.steady) {
        const int alarm = std::get<int>(*m_due.begin());
        if (std::get<Due>(*m_due.begin()) == Due::ShelfEnd) {
            unshelve(alarm, now);
            continue;
        }
        schedule(alarm, 0);
        if (m_pending[size_t(alarm)].isOn) {
            begin(alarm, now);
        } else {
            end(alarm, now);
        }
    }
}

std::optional<qint64> AlarmModel::nextDue() const
{
    return m_due.empty() ? std::nullopt : std::make_optional(std::get<qint64>(*m_due.begin()));
}

void AlarmModel::schedule(int alarm, qint64 when)
{
    qint64& change = m_pending[size_t(alarm)].change;
    if (change > 0) {
        m_due.erase({change, alarm, Due::Change});
    }
    change = when;
    if (when > 0) {
        m_due.emplace(when, alarm, Due::Change);
    }
}

void AlarmModel::count(bool wasShown, bool isShown)
{
    m_shown += int(isShown) - int(wasShown);
}

} // namespace norvo
