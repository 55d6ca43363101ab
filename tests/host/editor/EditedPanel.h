// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/editor/EditSession.h"
#include "host/panel/file/NewProblems.h"
#include "host/panel/file/PanelFile.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"
#include "host/window/ShownPanel.h"

#include <QVBoxLayout>

/// A panel of real devices in a window, without services, to be edited.
class EditedPanel : public norvo::LivePanel
{
public:
    explicit EditedPanel(const QByteArray& text, const QSize& size = {800, 480})
        : window("Panel"), m_pages(new norvo::PanelPages), m_panel(*m_pages)
    {
        auto* const layout = new QVBoxLayout(window.page());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(m_pages);
        if (const auto fault = run(norvo::YamlEdit(text), Accept::Runnable)) {
            qFatal("%s", qPrintable(fault->toString()));
        }
        window.resize(size);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window)) {
            qFatal("the window does not show");
        }
        session.emplace(*this, types(), text);
    }
    ~EditedPanel() override { session.reset(); }

    static const norvo::Catalogue& types()
    {
        static const norvo::Catalogue catalogue(builtTypes());
        return catalogue;
    }

    norvo::Panel& panel() override { return m_panel; }
    norvo::PanelPages& pages() override { return *m_pages; }
    const norvo::PanelDescription& description() const override { return m_description; }
    QHash<QString, norvo::Cells> cells() const override { return m_cells; }
    norvo::DiagnosticList problems() const override { return m_problems; }

    std::optional<norvo::Diagnostic> run(const norvo::YamlEdit& text, Accept accept) override
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        norvo::PanelDescription next =
            norvo::PanelFile::parse(text.text(), "panel.yaml", diagnostics);
        norvo::PanelPlan plan = norvo::PanelPlan::make(next, builtTypes(), {}, diagnostics,
                                                       m_panel.nodes(), norvo::SenseCheck(types()));
        for (const norvo::Diagnostic& one : norvo::newProblems(m_problems, diagnostics.sorted())) {
            if (one.severity == norvo::Diagnostic::Severity::Error &&
                (accept == Accept::Better || diagnostics.preventsStart())) {
                return one;
            }
        }
        m_description = std::move(next);
        m_problems = diagnostics.sorted();
        m_cells.clear();
        for (size_t i = 0; i < plan.nodes.size(); ++i) {
            if (plan.nodes[i]->isShowable()) {
                m_cells.insert(plan.nodes[i]->id(), plan.cells[int(i)]);
            }
        }
        m_pages->setLook(m_description.look);
        m_panel.apply(std::move(plan), diagnostics);
        return std::nullopt;
    }

    norvo::PanelWindow window;
    std::optional<norvo::EditSession> session;

private:
    norvo::PanelPages* m_pages; ///< The window owns it.
    norvo::Panel m_panel;
    norvo::PanelDescription m_description;
    QHash<QString, norvo::Cells> m_cells;
    norvo::DiagnosticList m_problems;
};
