// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/RunningPanel.h"

#include "host/program/Console.h"
#include "host/window/PanelPages.h"
#include "host/window/accessible/Accessibility.h"
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
      m_access(description, knowledge, pinCountFile, m_window)
{
    Accessibility::install();
    m_pages->setLook(description.look);
    auto* const layout = new QVBoxLayout(m_window.page());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);
    addKeys();
    if (!description.audit.file.isEmpty()) {
        m_audit.emplace(description.audit, titleOf(description));
        QObject::connect(&*m_audit, &AuditTrail::problem, &Console::report);
        m_audit->noteStart();
    }
}

void RunningPanel::stop()
{
    m_alarms.stop();
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
    QObject::connect(values, &QShortcut::activated, &m_window,
                     [this] { openValues(m_window, m_values, m_panel); });
}

void RunningPanel::start(PanelPlan plan, Diagnostics& diagnostics)
{
    m_marks.listen(plan);
    m_sources.listen(plan);
    m_values.listen(plan);
    m_alarms.listen(plan);
    m_panel.apply(std::move(plan), diagnostics);
    m_marks.show(m_panel);
    m_sources.complete(m_panel);
    m_values.complete(m_panel);
    m_alarms.complete(m_panel, m_sources);
    m_alarmFace.complete(m_panel);
    m_access.show(m_panel);
    if (m_description.look.fit == PanelLook::Fit::Scale) {
        m_window.scalePage(m_description.look.design);
    }
}

} // namespace norvo
