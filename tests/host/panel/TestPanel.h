// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"

#include <QVBoxLayout>

#include <utility>

/// Made before the panel that shows itself on them.
struct TestPages
{
    const QPointer<norvo::PanelPages> pages = new norvo::PanelPages;
};

/// A panel that is made from a description as the program makes it.
class TestPanel : private TestPages, public norvo::Panel
{
public:
    TestPanel(const DeviceManager& manager, norvo::PanelDescription description,
              norvo::PanelState saved = {})
        : Panel(*pages),
          m_manager(manager),
          m_description(std::move(description)),
          m_saved({"panel.state.yaml", std::move(saved)}),
          m_diagnostics(m_description.file)
    {}
    ~TestPanel() override
    {
        stop();
        delete pages;
    }

    norvo::PanelPages& shownOn() const { return *pages; }
    /// What the last start has reported.
    const norvo::Diagnostics& diagnostics() const { return m_diagnostics; }

    void start(QWidget* page)
    {
        if (!page->layout()) {
            new QVBoxLayout(page);
        }
        pages->setLook(m_description.look);
        page->layout()->addWidget(pages);
        change(m_description);
    }
    /// As a reload does it.
    void change(const norvo::PanelDescription& description)
    {
        m_diagnostics = norvo::Diagnostics(description.file);
        apply(norvo::PanelPlan::make(description, m_manager, m_saved, m_diagnostics, nodes()),
              m_diagnostics);
    }
    void stop()
    {
        Panel::stop();
        if (pages) {
            pages->setParent(nullptr);
        }
    }

private:
    const DeviceManager& m_manager;
    const norvo::PanelDescription m_description;
    const norvo::SavedState m_saved;
    norvo::Diagnostics m_diagnostics;
};
