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
#include <utility>

namespace norvo {

namespace {

QVector<int> weightsOf(const PanelLook::Weights& byArea, const QString& area)
{
    return byArea.value(area, byArea.value({}));
}

} // namespace

PanelPages::PanelPages(QWidget* parent) : PanelSurface(parent)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

PanelPages::~PanelPages()
{
    release();
    clear();
    // What waits for a place dies after this one's own part.
    for (QWidget* const widget : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        disconnect(widget, nullptr, this, nullptr);
    }
}

void PanelPages::setLook(const PanelLook& look)
{
    const bool isTouchNew = look.touch != m_look.touch;
    m_look = look;
    for (int i = 0; i < m_grids.size(); ++i) {
        const QString area = m_areas.value(i);
        m_grids[i]->setWeights(weightsOf(look.rows, area), weightsOf(look.columns, area));
    }
    if (isTouchNew && m_keys) {
        addKeys();
    }
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
    m_oldTiles = m_tiles;
    if (!m_content || areas.isEmpty() != m_areas.isEmpty()) {
        rebuild(areas);
    } else if (areas != m_areas) {
        changeTabs(areas);
    }
}

void PanelPages::rebuild(const QStringList& areas)
{
    for (PageGrid* grid : qAsConst(m_grids)) {
        takeWidgets(*grid);
    }
    clear();
    m_areas = areas;
    build();
}

/// Pages of areas that stay keep what stands on them, and how far they are scrolled.
void PanelPages::changeTabs(const QStringList& areas)
{
    const int before = m_tabs->currentIndex();
    const QString shown = m_areas.value(before);
    QHash<QString, QWidget*> pages;
    QHash<QString, PageGrid*> grids;
    delete std::exchange(m_keys, nullptr);
    for (int i = 0; i < m_areas.size(); ++i) {
        pages.insert(m_areas[i], m_tabs->widget(0));
        grids.insert(m_areas[i], m_grids[i]);
        m_tabs->removeTab(0);
    }
    m_grids.clear();
    m_areas = areas;
    for (const QString& area : areas) {
        QWidget* page = pages.take(area);
        PageGrid* grid = grids.take(area);
        if (!page) {
            page = new FingerScrollArea(makePage(area, grid));
        }
        m_grids.append(grid);
        addTab(page, area);
    }
    for (PageGrid* grid : qAsConst(grids)) {
        takeWidgets(*grid);
        m_unordered.remove(grid);
    }
    qDeleteAll(pages);
    const int now = areas.indexOf(shown); // One that is gone may have been renamed.
    m_tabs->setCurrentIndex(now < 0 ? qMin(before, areas.size() - 1) : now);
    addKeys();
}

/// Widgets wait outside of the pages for where they are placed next; tiles go.
void PanelPages::takeWidgets(PageGrid& grid)
{
    while (const std::unique_ptr<QLayoutItem> item{grid.takeAt(0)}) {
        QWidget* const widget = item->widget();
        m_placed.remove(widget);
        widget->setParent(this);
        if (qobject_cast<ErrorTile*>(widget)) {
            m_tiles.remove(widget->objectName());
            m_oldTiles.remove(widget->objectName());
            delete widget;
        }
    }
}

void PanelPages::build()
{
    if (m_areas.isEmpty()) {
        PageGrid* grid = nullptr;
        m_content = makePage({}, grid);
        m_grids.append(grid);
    } else {
        m_tabs = new QTabWidget;
        m_tabs->setDocumentMode(true); // without a frame
        for (const QString& area : qAsConst(m_areas)) {
            PageGrid* grid = nullptr;
            addTab(new FingerScrollArea(makePage(area, grid)), area);
            m_grids.append(grid);
        }
        m_content = new QWidget;
        auto* const column = new QVBoxLayout(m_content);
        column->addWidget(m_tabs, 1);
        addKeys();
    }
    layout()->addWidget(m_content);
}

void PanelPages::addTab(QWidget* page, const QString& area)
{
    m_tabs->addTab(page, QString(area).replace("&", "&&"));
}

void PanelPages::addKeys()
{
    delete m_keys;
    m_keys = new PageKeys(*m_tabs, TouchSize::pixels(m_look.touch, *screen()));
    static_cast<QVBoxLayout*>(m_content->layout())->insertWidget(0, m_keys);
}

QWidget* PanelPages::makePage(const QString& area, PageGrid*& grid)
{
    auto* const page = new CardPage;
    grid = new PageGrid(page, weightsOf(m_look.rows, area), weightsOf(m_look.columns, area));
    return page;
}

void PanelPages::place(QWidget* widget, const Cells& cells)
{
    PageGrid* const page = grid(cells.area);
    Q_ASSERT(page);
    const auto known = m_placed.constFind(widget);
    if (known != m_placed.constEnd()) {
        if (known->grid == page && known->cells == cells) {
            return;
        }
        known->grid->removeWidget(widget);
        orderFocusSoon(*known->grid);
    } else {
        connect(widget, &QObject::destroyed, this, &PanelPages::forget, Qt::UniqueConnection);
        Accessibility::follow(*widget);
    }
    m_placed.insert(widget, {page, cells});
    page->place(widget, cells.row, cells.column, cells.rowspan, cells.colspan);
    orderFocusSoon(*page);
}

void PanelPages::forget(QObject* widget)
{
    m_placed.remove(widget);
}

/// Once the widgets are placed, and made of their parts.
void PanelPages::orderFocusSoon(PageGrid& grid)
{
    if (m_unordered.isEmpty()) {
        QTimer::singleShot(0, this, [this] {
            for (PageGrid* const changed : qAsConst(m_grids)) {
                if (m_unordered.contains(changed)) {
                    orderFocus(*changed);
                }
            }
            m_unordered.clear();
        });
    }
    m_unordered.insert(&grid);
}

void PanelPages::placeError(const QString& id, const QString& text, const Cells& cells)
{
    ErrorTile* tile = m_oldTiles.value(id);
    if (tile && tile->reason() == text) {
        m_oldTiles.remove(id);
    } else {
        tile = new ErrorTile(id, text);
        m_tiles.insert(id, tile);
    }
    place(tile, cells);
}

void PanelPages::endPlacing()
{
    for (auto tile = m_oldTiles.cbegin(); tile != m_oldTiles.cend(); ++tile) {
        if (m_tiles.value(tile.key()) == *tile) {
            m_tiles.remove(tile.key());
        }
        delete *tile;
    }
    m_oldTiles.clear();
}

void PanelPages::release()
{
    if (m_content) {
        m_content->hide();
    }
    qDeleteAll(m_grids);
    m_grids.clear();
    m_placed.clear();
}

void PanelPages::clear()
{
    delete m_content;
    m_content = nullptr;
    m_tabs = nullptr;
    m_keys = nullptr;
    m_grids.clear();
    m_placed.clear();
    m_tiles.clear();
    m_oldTiles.clear();
    m_unordered.clear();
}

} // namespace norvo
