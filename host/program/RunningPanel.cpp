// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/RunningPanel.h"

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
#include <QRegularExpression>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace norvo {

namespace {

QString titleOf(const PanelDescription& description)
{
    return description.title.text.isEmpty() ? QFileInfo(description.file).fileName()
                                            : description.title.text;
}

/// Where the history of alarms is saved as a table; empty: nowhere.
QString tableOf(QString alarmFile)
{
    return alarmFile.replace(QRegularExpression("\\.jsonl$"), ".csv");
}

} // namespace

RunningPanel::RunningPanel(const PanelDescription& description, const TypeKnowledge& knowledge,
                           const QString& alarmFile, const QString& pinCountFile)
    : m_description(description),
      m_alarms(alarmFile),
      m_window(titleOf(description)),
      m_pages(new PanelPages),
      m_panel(*m_pages),
      m_alarmFace(m_alarms, m_window, *m_pages, tableOf(alarmFile)),
      m_marks(knowledge),
      m_access(description, knowledge, pinCountFile, m_window),
      m_operator(knowledge)
{
    Accessibility::install(&GuardedControl::make);
    m_pages->setLook(description.look);
    auto* const layout = new QVBoxLayout(m_window.page());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    addKeys();
    m_alarms.setPermit([this](Role needed, std::function<void()> action) {
        m_access.require(needed, std::move(action));
    });
    if (!description.audit.file.isEmpty()) {
        record();
    }
    if (description.history.isGiven) {
        m_history.emplace(description.history);
        QObject::connect(&*m_history, &HistoryService::problem, &Console::report);
    }
}

void RunningPanel::record()
{
    AuditTrail& audit = m_audit.emplace(m_description.audit, titleOf(m_description));
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
    if (Access* const access = m_access.access()) {
        audit.setRole(nameOf(access->role()));
        QObject::connect(access, &Access::roleChanged, &audit,
                         [&audit, access] { audit.setRole(nameOf(access->role())); });
        QObject::connect(access, &Access::unlocked, &audit, [&audit] { audit.note("unlocked"); });
        QObject::connect(access, &Access::locked, &audit, [&audit] { audit.note("locked"); });
        QObject::connect(access, &Access::refused, &audit, [&audit](Role needed) {
            audit.note("refused", {{"needed", nameOf(needed)}});
        });
    }
    audit.noteStart();
}

void RunningPanel::serve(const ViewSettings& settings)
{
    m_values.hearAll(m_panel); // A viewer may ask for any.
    const QString title = titleOf(m_description);
    const ViewSubject subject{m_window, title,
                              [this, title] { return valuesJson(title, m_values, m_sources); }};
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
    m_window.strip().setTouch(m_description.look.touch);
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
            if (m_graphMemory) { // Until the panel stops.
                m_graphMemory->read(graph, from, to, receiver, std::move(done));
            }
        };
    }
    return setting;
}

void RunningPanel::start(PanelPlan plan, Diagnostics& diagnostics)
{
    m_marks.listen(plan);
    m_sources.listen(plan);
    m_values.listen(plan);
    m_alarms.listen(plan);
    if (m_history) {
        m_history->listen(plan);
        m_graphMemory.emplace(*m_history);
        m_graphMemory->listen(plan);
    }
    if (m_audit) {
        m_operator.listen(plan);
    }
    m_panel.apply(std::move(plan), diagnostics);
    m_marks.show(m_panel);
    m_sources.complete(m_panel);
    m_values.complete(m_panel);
    m_alarms.complete(m_panel, m_sources);
    m_alarmFace.complete(m_panel);
    m_access.show(m_panel);
    GraphTools::addTo(m_panel, [this](const QString& graph) { return toolSetting(graph); });
    if (m_audit) {
        m_operator.complete(m_panel);
    }
    if (m_description.look.fit == PanelLook::Fit::Scale) {
        m_window.scalePage(m_description.look.design);
    }
}

} // namespace norvo
