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

#include <optional>

namespace norvo {

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

    AlarmService& alarms() { return m_alarms; }
    Panel& panel() { return m_panel; }
    PanelWindow& window() { return m_window; }
    AccessFace& access() { return m_access; }
    HistoryService* history() { return m_history ? &*m_history : nullptr; } ///< Null without one.
    GraphMemory* graphMemory() { return m_graphMemory ? &*m_graphMemory : nullptr; } ///< Likewise.

    void start(PanelPlan plan, Diagnostics& diagnostics); ///< Once.
    void stop();
    /// From now on, until stop(); what is wrong with it is reported, and the panel runs on.
    void serve(const ViewSettings& settings);

private:
    void addKeys();
    ToolSetting toolSetting(const QString& graph);
    void record(); ///< What is done, in the audit.

    const PanelDescription& m_description;
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
    std::optional<HistoryService> m_history; ///< Likewise.
    std::optional<GraphMemory> m_graphMemory;
    std::unique_ptr<View> m_view; ///< Where it is served.
};

} // namespace norvo
