// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"
#include "host/panel/plan/Placement.h"
#include "host/panel/run/PanelSurface.h"

#include <QHash>
#include <QSet>
#include <QStringList>

class QAbstractButton;
class QTabWidget;

namespace norvo {

class ErrorTile;
class PageGrid;
class PageKeys;

/// Where a panel's widgets stand: one grid, or tabs with a grid each.
class PanelPages : public PanelSurface
{
    Q_OBJECT

public:
    explicit PanelPages(QWidget* parent = nullptr);
    ~PanelPages() override; ///< Deletes what stands on it.

    void setLook(const PanelLook& look); ///< Its weights and what is touched.

    /// Null for an unknown area; the one grid where there are no tabs.
    PageGrid* grid(const QString& area) const;

    const QStringList& areas() const { return m_areas; } ///< The tabs; empty: there are none.
    QString areaOf(const QWidget& widget) const;         ///< Empty: it stands on no tab.
    QAbstractButton* key(const QString& area) const;     ///< Of a tab; null: there is none.
    void bringIntoView(QWidget& widget); ///< Turns to its tab, and scrolls as far as it must.

    void setAreas(const QStringList& areas) override; ///< The tab that is seen stays, or its place.
    void place(QWidget* widget, const Cells& cells) override;
    void placeError(const QString& id, const QString& text, const Cells& cells) override;
    void endPlacing() override;
    void release() override;
    void clear() override;

private slots:
    void forget(QObject* widget);

private:
    struct Placed
    {
        PageGrid* grid;
        Cells cells;
    };

    void build();
    void rebuild(const QStringList& areas);
    void changeTabs(const QStringList& areas);
    void takeWidgets(PageGrid& grid);
    QWidget* makePage(const QString& area, PageGrid*& grid);
    void addTab(QWidget* page, const QString& area);
    void addKeys();
    void orderFocusSoon(PageGrid& grid);

    PanelLook m_look;
    QStringList m_areas;
    QWidget* m_content = nullptr; ///< The one page, or the tabs and their keys.
    QTabWidget* m_tabs = nullptr; ///< Null where there is one page.
    PageKeys* m_keys = nullptr;   ///< Likewise.
    QList<PageGrid*> m_grids;     ///< By area.
    QHash<QObject*, Placed> m_placed;
    QHash<QString, ErrorTile*> m_tiles;    ///< By id.
    QHash<QString, ErrorTile*> m_oldTiles; ///< Of them, those that nobody has placed again.
    QSet<PageGrid*> m_unordered;           ///< Where the tab key does not yet follow the cells.
};

} // namespace norvo
