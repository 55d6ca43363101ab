// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/alarms/AlarmService.h"
#include "host/services/audit/AuditTrail.h"
#include "host/services/audit/OperatorWatch.h"
#include "host/services/history/HistoryService.h"
#include "host/services/status/SourceWatch.h"
#include "host/services/values/ValueTable.h"
#include "host/services/view/View.h"
#include "host/window/PanelWindow.h"
#include "host/window/access/AccessFace.h"
#include "host/window/alarms/AlarmFace.h"
#include "host/window/graphs/ToolSetting.h"
#include "host/window/history/GraphMemory.h"
#include "host/window/marks/StateMarks.h"
#include "host/window/status/StaleMarks.h"

#include <QPointer>
#include <QSet>

#include <optional>

namespace norvo {

class Access;
class PanelPages;

/// A panel with its window and with what runs beside it: each service listens from outside and
/// changes nothing of the devices.
class RunningPanel
{
public:
    /// `alarmFile` keeps what happened to alarms, `pinCountFile` the count of wrong PINs; with an
    /// empty name nothing is kept.
    RunningPanel(const PanelDescription& description, const TypeKnowledge& knowledge,
                 const QString& alarmFile, const QString& pinCountFile = {});

    const PanelDescription& description() const { return m_description; } ///< Of what runs.
    AlarmService& alarms() { return m_alarms; }
    Panel& panel() { return m_panel; }
    PanelPages& pages() { return *m_pages; }
    PanelWindow& window() { return m_window; }
    AccessFace& access() { return m_access; }
    HistoryService* history() { return m_history ? &*m_history : nullptr; } ///< Null without one.
    GraphMemory* graphMemory() { return m_graphMemory ? &*m_graphMemory : nullptr; } ///< Likewise.

    void start(PanelPlan plan, Diagnostics& diagnostics); ///< Once.
    /// Whether another description can only be run by devices that are all new: what has made them
    /// and their widgets cannot be changed.
    bool needsNewDevices(const PanelDescription& description) const;
    /// Lets another description run in the place of the one that runs, of which the plan may keep
    /// devices. What runs beside it goes on as far as it is still asked for.
    void change(const PanelDescription& description, PanelPlan plan, Diagnostics& diagnostics);
    void stop();
    /// From now on, until stop(); what is wrong with it is reported, and the panel runs on.
    void serve(const ViewSettings& settings);

private:
    void addKeys();
    ToolSetting toolSetting(const QString& graph);
    void followSetting();
    void followAudit(const QString& title);
    void record(); ///< What is done, in the audit.
    void recordAccess();
    void listen(const PanelPlan& plan);
    void apply(PanelPlan plan, Diagnostics& diagnostics);
    void complete(const QSet<QString>& made);

    PanelDescription m_description;
    SourceWatch m_sources;
    AlarmService m_alarms;
    ValueTable m_values;
    PanelWindow m_window;
    PanelPages* const m_pages; ///< The window owns it.
    Panel m_panel;
    AlarmFace m_alarmFace;
    StateMarks m_marks;
    StaleMarks m_staleMarks{m_sources, m_panel};
    AccessFace m_access;
    OperatorWatch m_operator;
    std::optional<AuditTrail> m_audit;       ///< Where the panel has one.
    QPointer<Access> m_recordedAccess;       ///< In the audit.
    std::optional<HistoryService> m_history; ///< Where the panel has one.
    std::optional<GraphMemory> m_graphMemory;
    std::unique_ptr<View> m_view; ///< Where it is served.
};

} // namespace norvo
