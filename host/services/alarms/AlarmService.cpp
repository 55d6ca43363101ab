// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmService.h"

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/alarms/AlarmCondition.h"
#include "host/services/alarms/AlarmLines.h"
#include "host/services/signals/SignalTap.h"
#include "host/services/status/SourceWatch.h"
#include "host/services/values/ValueTable.h"

#include "norvo/BaseDevice.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

constexpr int kMaxDetailLength = 200; // In characters.

AlarmDefinition definitionOf(const AlarmSetting& setting)
{
    return {setting.id,       setting.device, setting.text,     setting.help,
            setting.priority, setting.delay,  setting.offDelay, setting.hasSound};
}

/// Of an alarm that comes by itself.
AlarmDefinition definitionOf(const QString& id, const QString& device, const QString& text)
{
    AlarmDefinition definition{id, device, text};
    definition.hasSound = false;
    return definition;
}

} // namespace

/// The limit of an alarm that the panel names.
struct AlarmService::Limit
{
    PlannedAlarm planned;
    int alarm = -1;
    bool isBeyond = false;                                      ///< As the last value said.
    std::unique_ptr<QObject> ear = std::make_unique<QObject>(); ///< Owns the tap.

    bool hears(const PlannedAlarm& other) const
    {
        const AlarmLimit& mine = planned.setting.limit;
        const AlarmLimit& its = other.setting.limit;
        return planned.setting.device == other.setting.device &&
               planned.signature == other.signature && mine.kind == its.kind &&
               mine.text == its.text && mine.isYes == its.isYes && mine.deadband == its.deadband;
    }
};

AlarmService::AlarmService(const QString& historyFile, QObject* parent)
    : QObject(parent),
      m_history(historyFile),
      m_readouts([this](const AlarmDefinition& definition) { return define(definition); },
                 [this](int alarm, bool isOn) { set(alarm, isOn); })
{
    m_clock.start();
    m_due.setSingleShot(true);
    m_due.setTimerType(Qt::PreciseTimer);
    m_tell.setSingleShot(true);
    connect(&m_due, &QTimer::timeout, this, &AlarmService::advance);
    connect(&m_tell, &QTimer::timeout, this, &AlarmService::tell);
    connect(&m_history, &AlarmHistory::problem, this, &AlarmService::problem);
}

AlarmService::~AlarmService() = default;

AlarmMoment AlarmService::now() const
{
    return {m_clock.elapsed() + 1, QDateTime::currentMSecsSinceEpoch()};
}

void AlarmService::listen(const PanelPlan& plan)
{
    if (!m_isListening) {
        m_isListening = true;
        m_history.read();
        restore();
        m_model.setListener([this](const AlarmEvent& event) { record(event); });
    }
    listenTo(plan);
    setTimer(); // A shelf may be over.
    note();
}

/// What was not over when the panel last ran goes on, until a value says otherwise.
void AlarmService::restore()
{
    const AlarmMoment start = now();
    const QHash<QString, AlarmEntry>& entries = m_history.unfinished();
    for (const AlarmEntry& entry : entries) {
        AlarmDefinition definition = definitionOf(entry.id, entry.device, entry.text);
        definition.priority = entry.priority;
        const int alarm = m_model.add(definition);
        if (alarm < 0) {
            return;
        }
        const qint64 shelf =
            std::min(entry.shelvedUntil - start.wall, qint64(AlarmModel::kMaxShelf.count()));
        const AlarmMoment until =
            entry.shelvedUntil > 0
                ? AlarmMoment{start.steady + std::max<qint64>(shelf, 0), entry.shelvedUntil}
                : AlarmMoment{};
        m_model.restore(alarm, entry.state, {0, entry.since}, until, entry.detail);
    }
}

void AlarmService::listenTo(const PanelPlan& plan)
{
    const QSet<QString> kept = plan.kept();
    m_readouts.forgetAllBut(kept);
    const QVector<int> stillHeard = m_readouts.alarms();
    m_defined = QSet<int>(stillHeard.cbegin(), stillHeard.cend());
    QHash<QString, Node*> nodes;
    for (Node* const node : plan.nodes) {
        nodes.insert(node->id(), node);
        if (!kept.contains(node->id())) {
            m_readouts.listen(*node);
        }
    }
    QHash<int, std::unique_ptr<Limit>*> before;
    std::vector<std::unique_ptr<Limit>> limits = std::exchange(m_limits, {});
    for (auto& limit : limits) {
        before.insert(limit->alarm, &limit);
    }
    for (const PlannedAlarm& planned : plan.alarms) {
        const int alarm = define(definitionOf(planned.setting));
        if (alarm < 0) {
            continue;
        }
        std::unique_ptr<Limit>* const known = before.value(alarm);
        if (known && *known && (*known)->hears(planned) && kept.contains(planned.setting.device)) {
            m_limits.push_back(std::move(*known));
            continue;
        }
        m_limits.push_back(std::make_unique<Limit>());
        m_limits.back()->planned = planned;
        m_limits.back()->alarm = alarm;
        m_limits.back()->isBeyond = m_model.at(alarm).isActive();
        listenTo(planned, *nodes.value(planned.setting.device)->device(), *m_limits.back());
    }
}

void AlarmService::listenTo(const PlannedAlarm& planned, BaseDevice& device, Limit& limit)
{
    SignalTap::open(
        device, planned.signature,
        [this, &limit](const SignalArguments& arguments) {
            const QVariant value = arguments.at(0);
            const auto isBeyond = isBeyondLimit(limit.planned.setting.limit, value, limit.isBeyond);
            if (isBeyond) {
                const bool isNew = *isBeyond && !limit.isBeyond;
                limit.isBeyond = *isBeyond;
                set(limit.alarm, *isBeyond, isNew ? shownText(value) : QString());
            }
        },
        *limit.ear);
}

int AlarmService::define(const AlarmDefinition& definition)
{
    const int alarm = m_model.add(definition);
    if (alarm >= 0) {
        m_defined.insert(alarm);
    }
    return alarm;
}

void AlarmService::complete(const Panel& panel, const SourceWatch& sources)
{
    const auto all = sources.sources();
    QSet<QString> sourceIds;
    for (const Source& source : all) {
        sourceIds.insert(source.id);
        AlarmDefinition lost =
            definitionOf(source.id + " lost", source.id, tr("%1: connection lost").arg(source.id));
        lost.delay = kLossDelay;
        define(lost);
    }
    for (const Node* const node : panel.nodes()) {
        if (node->state() == Node::State::Failed && !sourceIds.contains(node->id())) {
            AlarmDefinition failed = definitionOf(node->id() + " failed", node->id(),
                                                  tr("%1 does not run").arg(captionOf(*node)));
            failed.priority = AlarmPriority::High;
            set(define(failed), true, node->errors().join("; "));
        }
    }
    for (int alarm = 0; alarm < int(m_model.alarms().size()); ++alarm) {
        if (!m_defined.contains(alarm)) { // There is no such thing any more.
            set(alarm, false);
            m_model.retire(alarm);
        }
    }
    disconnect(&sources, &SourceWatch::changed, this, nullptr);
    connect(&sources, &SourceWatch::changed, this, [this, &sources] { takeSources(sources); });
    takeSources(sources);
}

void AlarmService::stop()
{
    m_isStopped = true;
    m_due.stop();
    m_history.save();
}

void AlarmService::takeSources(const SourceWatch& sources)
{
    const auto all = sources.sources();
    for (const Source& source : all) {
        if (source.state != Source::State::Unknown) {
            set(m_model.find(source.id + " lost"), source.state == Source::State::Lost,
                source.message);
        }
    }
}

void AlarmService::set(int alarm, bool isOn, const QString& detail)
{
    if (alarm >= 0 && !m_isStopped) {
        m_model.setCondition(alarm, isOn, now(), detail.left(kMaxDetailLength));
        setTimer();
    }
}

void AlarmService::operate(const std::function<void()>& action)
{
    if (m_permit) {
        m_permit(Role::Operate, action);
    } else {
        action();
    }
}

void AlarmService::acknowledge(const QVector<int>& alarms)
{
    operate([this, alarms] {
        for (const int alarm : alarms) {
            if (m_model.at(alarm).isUnacknowledged()) {
                m_model.acknowledge(alarm, now());
                emit operated("acknowledged", m_model.at(alarm).definition.id);
            }
        }
    });
}

void AlarmService::shelve(const QVector<int>& alarms, Duration time)
{
    operate([this, alarms, time] {
        for (const int alarm : alarms) {
            m_model.shelve(alarm, time, now());
            emit operated("shelved", m_model.at(alarm).definition.id);
        }
        setTimer();
    });
}

void AlarmService::unshelve(const QVector<int>& alarms)
{
    operate([this, alarms] {
        for (const int alarm : alarms) {
            m_model.unshelve(alarm, now());
            emit operated("unshelved", m_model.at(alarm).definition.id);
        }
    });
}

void AlarmService::silence()
{
    operate([this] {
        m_isSilenced = true;
        note();
    });
}

void AlarmService::record(const AlarmEvent& event)
{
    m_history.add(AlarmEntry::of(event));
    if (event.kind == AlarmEvent::Kind::Began && !event.alarm.isShelved()) {
        const int alarm = m_model.find(event.alarm.definition.id);
        if (m_begun < 0 || isWorse(event.alarm, m_model.at(m_begun))) {
            m_begun = alarm;
        }
        m_isSilenced = m_isSilenced && !event.alarm.definition.hasSound;
    }
    note();
}

void AlarmService::note()
{
    if (!m_tell.isActive()) {
        m_tell.start(int(std::max<qint64>(m_told + kTellDelayMs - now().steady, 0)));
    }
}

void AlarmService::tell()
{
    m_told = now().steady;
    m_heard.reset();
    for (const Alarm& alarm : m_model.alarms()) {
        if (alarm.isShown() && alarm.isUnacknowledged() && alarm.definition.hasSound) {
            m_heard = std::max(m_heard, std::make_optional(alarm.definition.priority));
        }
    }
    const int begun = m_begun;
    m_begun = -1;
    emit changed();
    if (begun >= 0 && m_model.at(begun).isShown()) {
        emit began(begun);
    }
}

void AlarmService::advance()
{
    m_model.advance(now());
    setTimer();
}

void AlarmService::setTimer()
{
    const auto due = m_model.nextDue();
    if (!due) {
        m_due.stop();
        return;
    }
    const qint64 wait = std::max<qint64>(*due - now().steady, 0);
    const int interval = int(std::min<qint64>(wait, 3600LL * 1000)); // It looks again then.
    if (!m_due.isActive() || m_due.remainingTime() > interval) {
        m_due.start(interval);
    }
}

} // namespace norvo
