// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/PanelPane.h"

#include "host/editor/pages/PagesList.h"
#include "host/editor/pages/PanelForm.h"

namespace norvo {

PanelPane::PanelPane(EditSession& session, QWidget* parent) : QTabWidget(parent)
{
    setDocumentMode(true); // Without a frame.
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    auto* const form = new PanelForm(session, this);
    auto* const pages = new PagesList(session, this);
    addTab(form, tr("Settings"));
    addTab(pages, tr("Pages"));
    connect(form, &PanelForm::problem, this, &PanelPane::problem);
    connect(pages, &PagesList::problem, this, &PanelPane::problem);
}

} // namespace norvo
