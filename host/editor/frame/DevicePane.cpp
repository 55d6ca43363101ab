// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/DevicePane.h"

#include "host/editor/EditSession.h"
#include "host/editor/form/DeviceForm.h"
#include "host/editor/wiring/PortsForm.h"

#include <QTabBar>

namespace norvo {

namespace {

enum Tab { Settings, Ports };

} // namespace

DevicePane::DevicePane(EditSession& session, QWidget* parent)
    : QTabWidget(parent), m_session(session)
{
    setDocumentMode(true); // Without a frame.
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    auto* const form = new DeviceForm(session, this);
    auto* const ports = new PortsForm(session, this);
    addTab(form, tr("Settings"));
    addTab(ports, tr("Outputs and inputs"));
    connect(form, &DeviceForm::problem, this, &DevicePane::problem);
    connect(ports, &PortsForm::problem, this, &DevicePane::problem);
    connect(&session, &EditSession::selectionChanged, this, &DevicePane::follow);
    connect(&session, &EditSession::changed, this, &DevicePane::follow);
    follow();
}

void DevicePane::follow()
{
    const QStringList& selected = m_session.selection();
    const bool hasPorts =
        selected.size() == 1 && PortsForm::isFor(m_session, selected.constFirst());
    if (!hasPorts) {
        setCurrentIndex(Settings);
    }
    tabBar()->setVisible(hasPorts);
    setTabEnabled(Ports, hasPorts);
}

} // namespace norvo
