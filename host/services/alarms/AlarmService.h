// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/access/Permit.h"
#include "host/services/alarms/AlarmHistory.h"
#include "host/services/alarms/AlarmModel.h"
#include "host/services/alarms/ReadoutAlerts.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVector>

#include <memory>
#include <optional>
#include <utility>

class BaseDevice;

namespace norvo {

class Panel;
class SourceWatch;
struct PanelPlan;
struct PlannedAlarm;

/// The alarms of a running panel: those that its file names, and those that come by themselves,
/// of readouts, of devices that did not start, and of sources that are lost. It listens only.
class AlarmService : public QObject
{
    Q_OBJECT

public:
    static constexpr int kTellDelayMs = 50;     ///< From one changed() to the next, at least.
    static constexpr Duration kLossDelay{1000}; ///< A source that is back sooner was not lost.

    /// Where the history is kept; an empty name: in memory only.
    explicit AlarmService(const QString& historyFile, QObject* parent = nullptr);
    ~AlarmService() override;

    /// Before each plan is applied. The first time it reads the history; later the states of alarms
    /// that are still defined live on, and others end.
    void listen(const PanelPlan& plan);
    /// Once it is, and once `sources` is complete, which is to outlive this.
    void complete(const Panel& panel, const SourceWatch& sources);

    void stop(); ///< Hears nothing more: what a panel does when it ends is no alarm.

    const AlarmModel& model() const { return m_model; }
    const AlarmHistory& history() const { return m_history; }
    AlarmMoment now() const;

    /// Who may do what follows; without it everybody may.
    void setPermit(Permit permit) { m_permit = std::move(permit); }
    /// What an operator asks for, done by one who may operate.
    void operate(const std::function<void()>& action);
    void acknowledge(const QVector<int>& alarms);
    void shelve(const QVector<int>& alarms, Duration time);
    void unshelve(const QVector<int>& alarms);

    /// Whether an alarm that is to be heard waits to be acknowledged, and nobody has silenced it.
    bool isSounding() const { return m_heard && !m_isSilenced; }
    bool isSilenced() const { return m_heard && m_isSilenced; } ///< Somebody has.
    /// Of the worst that waits and is to be heard.
    AlarmPriority heardPriority() const { return m_heard.value_or(AlarmPriority::Low); }
    void silence(); ///< Until the next alarm begins.

signals:
    void changed();             ///< At most 20 times a second, however much happens.
    void began(int alarm);      ///< With changed(): the worst of those that have begun since.
    void problem(QString line); ///< One line for the user.
    /// The operator has done this to an alarm: "acknowledged", "shelved" or "unshelved".
    void operated(QString what, QString alarm);

private:
    struct Limit;

    int define(const AlarmDefinition& definition);
    void listenTo(const PanelPlan& plan);
    void listenTo(const PlannedAlarm& planned, BaseDevice& device, Limit& limit);
    void restore();
    void set(int alarm, bool isOn, const QString& detail = {});
    void takeSources(const SourceWatch& sources);
    void record(const AlarmEvent& event);
    void note();
    void tell();
    void advance();
    void setTimer();

    Permit m_permit;
    QElapsedTimer m_clock;
    AlarmModel m_model;
    AlarmHistory m_history;
    ReadoutAlerts m_readouts;
    std::vector<std::unique_ptr<Limit>> m_limits;
    QSet<int> m_defined; ///< By the panel of now; others are from before.
    QTimer m_due;
    QTimer m_tell;
    qint64 m_told = -kTellDelayMs; ///< When changed() was last emitted; steady.
    int m_begun = -1;              ///< The worst that has begun since changed(); -1: none.
    bool m_isListening = false;
    bool m_isStopped = false;
    bool m_isSilenced = false;
    std::optional<AlarmPriority> m_heard; ///< As of changed().
};

} // namespace norvo
