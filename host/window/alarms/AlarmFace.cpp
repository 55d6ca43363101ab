// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmFace.h"

#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"
#include "host/window/alarms/AlarmDots.h"
#include "host/window/alarms/AlarmStrip.h"
#include "host/window/alarms/DeviceFrame.h"
#include "host/window/sheet/Sheet.h"
#include "host/window/strip/PanelStrip.h"

#include "norvo/BaseWidget.h"

#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

namespace norvo {

AlarmFace::AlarmFace(AlarmService& service, PanelWindow& window, PanelPages& pages,
                     const QString& tableFile)
    : m_service(service), m_window(window), m_pages(pages), m_strip(new AlarmStrip(service))
{
    m_places.tableFile = tableFile;
    window.strip().addPart(m_strip, 1);
    connect(m_strip, &AlarmStrip::listRequested, this, &AlarmFace::openList);
    connect(new QShortcut(Qt::Key_F8, &window), &QShortcut::activated, m_strip,
            &AlarmStrip::takeFocus);
}

AlarmFace::~AlarmFace() = default;

void AlarmFace::complete(const Panel& panel)
{
    m_panel = &panel;
    m_places.pages = m_pages.areas();
    m_places.pageOf.clear();
    for (const Node* const node : panel.nodes()) {
        const BaseWidget* const widget = panel.widget(node->id());
        const QString page = widget ? m_pages.areaOf(*widget) : QString();
        if (!page.isEmpty()) {
            m_places.pageOf.insert(node->id(), page);
        }
    }
    m_dots = std::make_unique<AlarmDots>(m_service, m_pages, m_places.pageOf);
}

void AlarmFace::openList()
{
    auto* const sheet = new Sheet(*m_strip, tr("Alarms"));
    auto* const page = new AlarmPage(m_service, m_places, *sheet);
    sheet->content().addWidget(page);
    page->begin();
    connect(page, &AlarmPage::deviceRequested, this, &AlarmFace::goTo);
    sheet->present();
}

void AlarmFace::goTo(const QString& device)
{
    BaseWidget* const widget = m_panel ? m_panel->widget(device) : nullptr;
    if (!widget) {
        return;
    }
    m_pages.bringIntoView(*widget);
    // Once the page that it stands on is laid out.
    QTimer::singleShot(0, widget, [widget] { DeviceFrame::mark(*widget); });
}

} // namespace norvo
