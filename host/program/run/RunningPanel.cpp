// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/run/RunningPanel.h"

#include "host/panel/file/PanelFile.h"
#include "host/program/streams/Console.h"
#include "host/services/access/Access.h"
#include "host/services/view/ValuesJson.h"
#include "host/window/PanelPages.h"
#include "host/window/access/GuardedControl.h"
#include "host/window/accessible/Accessibility.h"
#include "host/window/graphs/GraphTools.h"
#include "host/window/look/TouchSize.h"
#include "host/window/status/SourceKey.h"
#include "host/window/status/ValuesPage.h"
#include "host/window/strip/PanelStrip.h"

#include <QFileInfo>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace norvo {

namespace {

/// Where the history of alarms is saved as a table; empty: nowhere.
QString tableOf(const QString& alarmFile)
{
    const QString end = ".jsonl";
    return alarmFile.endsWith(end) ? alarmFile.chopped(end.size()) + ".csv" : alarmFile;
}

} // namespace

RunningPanel::RunningPanel(const PanelDescription& description, const TypeKnowledge& knowledge,
                           const QString& alarmFile, const QString& pinCountFile)
    : m_description(description),
      m_alarms(alarmFile),
      m_window(PanelFile::shownTitle(description)),
      m_pages(new PanelPages),
      m_panel(*m_pages),
      m_alarmFace(m_alarms, m_window, *m_pages, tableOf(alarmFile)),
      m_marks(knowledge),
      m_access(knowledge, pinCountFile, m_window),
      m_operator(knowledge)
{
    Accessibility::install(&GuardedControl::make);
    auto* const layout = new QVBoxLayout(m_window.page());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    addKeys();
    m_alarms.setPermit([this](Role needed, std::function<void()> action) {
        m_access.require(needed, std::move(action));
    });
    m_operator.follow(m_panel);
    followSetting();
}

/// What the file says beside its devices.
void RunningPanel::followSetting()
{
    const QString title = PanelFile::shownTitle(m_description);
    m_window.setWindowTitle(title);
    m_window.strip().setTouch(m_description.look.touch);
    m_pages->setLook(m_description.look);
    m_access.follow(m_description);
    followAudit(title);
    if (m_history && !m_history->records(m_description.history)) {
        m_graphMemory.reset();
        m_history.reset();
    }
    if (!m_history && m_description.history.isGiven) {
        m_history.emplace(m_description.history);
        QObject::connect(&*m_history, &HistoryService::problem, &Console::report);
    }
}

void RunningPanel::followAudit(const QString& title)
{
    if (m_audit && !m_audit->isOf(m_description.audit, title)) {
        m_audit->noteStop();
        m_audit.reset();
    }
    if (!m_audit && !m_description.audit.file.isEmpty()) {
        m_audit.emplace(m_description.audit, title);
        record();
        m_audit->noteStart();
    }
    if (m_audit && m_recordedAccess != m_access.access()) {
        recordAccess();
    }
}

void RunningPanel::record()
{
    AuditTrail& audit = *m_audit;
    m_recordedAccess.clear();
    QObject::connect(&audit, &AuditTrail::problem, &Console::report);
    QObject::connect(&m_operator, &OperatorWatch::given, &audit, &AuditTrail::noteValue);
    QObject::connect(&m_alarms, &AlarmService::operated, &audit,
                     [&audit](const QString& what, const QString& alarm) {
                         audit.note(what, {{"alarm", alarm}});
                     });
    QObject::connect(&m_access, &AccessFace::confirmed, &audit,
                     [&audit](const QString& device, const QString& value) {
                         audit.note("confirmed", {{"device", device}, {"value", value}});
                     });
    QObject::connect(&m_access, &AccessFace::declined, &audit,
                     [&audit](const QString& device, const QString& value) {
                         audit.note("declined", {{"device", device}, {"value", value}});
                     });
    recordAccess();
}

void RunningPanel::recordAccess()
{
    AuditTrail& audit = *m_audit;
    Access* const access = m_access.access();
    m_recordedAccess = access;
    audit.setRole(access ? nameOf(access->role()) : QString());
    if (!access) {
        return;
    }
    QObject::connect(access, &Access::roleChanged, &audit,
                     [&audit, access] { audit.setRole(nameOf(access->role())); });
    QObject::connect(access, &Access::unlocked, &audit, [&audit] { audit.note("unlocked"); });
    QObject::connect(access, &Access::locked, &audit, [&audit] { audit.note("locked"); });
    QObject::connect(access, &Access::refused, &audit, [&audit](Role needed) {
        audit.note("refused", {{"needed", nameOf(needed)}});
    });
}

void RunningPanel::serve(const ViewSettings& settings)
{
    m_values.hearAll(m_panel); // A viewer may ask for any.
    const ViewSubject subject{
        m_window, PanelFile::shownTitle(m_description),
        [this] { return valuesJson(PanelFile::shownTitle(m_description), m_values, m_sources); }};
    QString error;
    m_view = makeView(settings, subject, error);
    if (m_view) {
        Console::print(QString("the panel can be seen at %1").arg(m_view->url()));
    } else {
        Console::reportError(QString("the panel cannot be served: %1").arg(error));
    }
}

void RunningPanel::stop()
{
    m_view.reset();
    m_alarms.stop();
    if (m_history) {
        m_graphMemory.reset();
        m_history->stop();
    }
    m_panel.stop();
    if (m_audit) {
        m_audit->noteStop();
    }
}

void RunningPanel::addKeys()
{
    m_window.strip().addPart(new SourceKey(m_sources));
    auto* const values = new QShortcut(Qt::Key_F12, &m_window);
    QObject::connect(values, &QShortcut::activated, &m_window, [this] {
        m_access.require(Role::Engineer, [this] { openValues(m_window, m_values, m_panel); });
    });
}

ToolSetting RunningPanel::toolSetting(const QString& graph)
{
    ToolSetting setting;
    setting.keySize = TouchSize::pixels(m_description.look.touch, *m_window.screen());
    const QFileInfo file(m_description.file);
    setting.fileStart = file.absolutePath() + '/' + file.completeBaseName() + '-' + graph;
    setting.permit = [this](std::function<void()> action) {
        m_access.require(Role::Operate, std::move(action));
    };
    if (m_graphMemory && m_graphMemory->remembers(graph)) {
        setting.readEarlier = [this, graph](double from, double to, QObject& receiver, auto done) {
            if (m_graphMemory) { // Until the panel stops, or remembers nothing any more.
                m_graphMemory->read(graph, from, to, receiver, std::move(done));
            }
        };
    }
    return setting;
}

void RunningPanel::start(PanelPlan plan, Diagnostics& diagnostics)
{
    apply(std::move(plan), diagnostics);
    if (m_description.look.fit == PanelLook::Fit::Scale) {
        m_window.scalePage(m_description.look.design);
    }
}

bool RunningPanel::needsNewDevices(const PanelDescription& description) const
{
    const PanelLook& before = m_description.look;
    const PanelLook& look = description.look;
    return look.language != before.language || look.touch != before.touch ||
           look.fit != before.fit || look.design != before.design ||
           (m_description.audit.file.isEmpty() && !description.audit.file.isEmpty());
}

void RunningPanel::change(const PanelDescription& description, PanelPlan plan,
                          Diagnostics& diagnostics)
{
    const PanelLook before = std::exchange(m_description, description).look;
    const PanelLook& look = m_description.look;
    followSetting();
    if (look.fit == before.fit && look.design == before.design) {
        apply(std::move(plan), diagnostics);
    } else { // What is drawn larger or smaller knows it.
        listen({});
        m_panel.stop();
        m_window.unscalePage();
        start(std::move(plan), diagnostics);
    }
    if (m_audit) {
        m_audit->note("reload");
    }
}

void RunningPanel::apply(PanelPlan plan, Diagnostics& diagnostics)
{
    QSet<QString> made;
    for (const auto& node : plan.made) {
        made.insert(node->id());
    }
    listen(plan);
    m_panel.apply(std::move(plan), diagnostics);
    complete(made);
}

void RunningPanel::listen(const PanelPlan& plan)
{
    m_marks.listen(plan);
    m_sources.listen(plan);
    m_values.listen(plan);
    m_alarms.listen(plan);
    if (m_history) {
        m_history->listen(plan);
        if (!m_graphMemory) {
            m_graphMemory.emplace(*m_history);
        }
        m_graphMemory->listen(plan);
    }
    static const PanelPlan nothing;
    m_operator.listen(m_audit ? plan : nothing);
}

void RunningPanel::complete(const QSet<QString>& made)
{
    m_marks.show(m_panel);
    m_sources.complete(m_panel);
    m_values.complete(m_panel);
    m_alarms.complete(m_panel, m_sources);
    m_alarmFace.complete(m_panel);
    m_access.show(m_panel);
    GraphTools::addTo(m_panel, made, [this](const QString& graph) { return toolSetting(graph); });
    m_operator.complete(m_panel);
}

} // namespace norvo
