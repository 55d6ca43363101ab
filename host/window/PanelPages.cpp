// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/PanelPages.h"

#include "host/panel/plan/Placement.h"
#include "host/window/ErrorTile.h"
#include "host/window/accessible/Accessibility.h"
#include "host/window/accessible/FocusOrder.h"
#include "host/window/layout/CardPage.h"
#include "host/window/layout/FingerScrollArea.h"
#include "host/window/layout/PageGrid.h"
#include "host/window/layout/PageKeys.h"
#include "host/window/look/TouchSize.h"

#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace norvo {

PanelPages::PanelPages(QWidget* parent) : PanelSurface(parent)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void PanelPages::setLook(const PanelLook& look)
{
    m_look = look;
}

PageGrid* PanelPages::grid(const QString& area) const
{
    return m_areas.isEmpty() ? m_grids.value(0, nullptr)
                             : m_grids.value(m_areas.indexOf(area), nullptr);
}

QString PanelPages::areaOf(const QWidget& widget) const
{
    for (int i = 0; m_tabs && i < m_areas.size(); ++i) {
        if (m_tabs->widget(i)->isAncestorOf(&widget)) {
            return m_areas[i];
        }
    }
    return {};
}

QAbstractButton* PanelPages::key(const QString& area) const
{
    return m_keys ? m_keys->key(m_areas.indexOf(area)) : nullptr;
}

void PanelPages::bringIntoView(QWidget& widget)
{
    const int tab = m_areas.indexOf(areaOf(widget));
    if (tab >= 0) {
        m_tabs->setCurrentIndex(tab);
    }
    for (QWidget* around = widget.parentWidget(); around; around = around->parentWidget()) {
        if (auto* const scroll = qobject_cast<QScrollArea*>(around)) {
            scroll->ensureWidgetVisible(&widget);
        }
    }
}

void PanelPages::setAreas(const QStringList& areas)
{
    const QString shown = m_tabs ? m_areas.value(m_tabs->currentIndex()) : QString();
    // Widgets that stay wait outside of the pages; tiles go with them.
    for (PageGrid* grid : qAsConst(m_grids)) {
        while (const std::unique_ptr<QLayoutItem> item{grid->takeAt(0)}) {
            if (!qobject_cast<ErrorTile*>(item->widget())) {
                item->widget()->setParent(this);
            }
        }
    }
    clear();
    m_areas = areas;
    build();
    if (m_tabs) {
        m_tabs->setCurrentIndex(qMax(0, areas.indexOf(shown)));
    }
    // Once the widgets are placed, and made of their parts.
    QTimer::singleShot(0, this, [this] {
        std::for_each(m_grids.cbegin(), m_grids.cend(),
                      [](const PageGrid* grid) { orderFocus(*grid); });
    });
}

void PanelPages::build()
{
    if (m_areas.isEmpty()) {
        m_content = makePage({});
    } else {
        m_tabs = new QTabWidget;
        m_tabs->setDocumentMode(true); // without a frame
        for (const QString& area : qAsConst(m_areas)) {
            m_tabs->addTab(new FingerScrollArea(makePage(area)), QString(area).replace("&", "&&"));
        }
        m_content = new QWidget;
        auto* const column = new QVBoxLayout(m_content);
        m_keys = new PageKeys(*m_tabs, TouchSize::pixels(m_look.touch, *screen()));
        column->addWidget(m_keys);
        column->addWidget(m_tabs, 1);
    }
    layout()->addWidget(m_content);
}

QWidget* PanelPages::makePage(const QString& area)
{
    const auto weights = [&area](const PanelLook::Weights& byArea) {
        return byArea.value(area, byArea.value({}));
    };
    auto* const page = new CardPage;
    m_grids.append(new PageGrid(page, weights(m_look.rows), weights(m_look.columns)));
    return page;
}

void PanelPages::place(QWidget* widget, const Cells& cells)
{
    PageGrid* const page = grid(cells.area);
    Q_ASSERT(page);
    page->place(widget, cells.row, cells.column, cells.rowspan, cells.colspan);
    Accessibility::follow(*widget);
}

void PanelPages::placeError(const QString& id, const QString& text, const Cells& cells)
{
    place(new ErrorTile(id, text), cells);
}

void PanelPages::release()
{
    if (m_content) {
        m_content->hide();
    }
    qDeleteAll(m_grids);
    m_grids.clear();
}

void PanelPages::clear()
{
    delete m_content;
    m_content = nullptr;
    m_tabs = nullptr;
    m_keys = nullptr;
    m_grids.clear();
}

} // namespace norvo
