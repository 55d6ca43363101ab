// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"
#include "host/panel/run/PanelSurface.h"

#include <QStringList>

class QAbstractButton;
class QTabWidget;

namespace norvo {

class PageGrid;
class PageKeys;

/// Where a panel's widgets stand: one grid, or tabs with a grid each.
class PanelPages : public PanelSurface
{
    Q_OBJECT

public:
    explicit PanelPages(QWidget* parent = nullptr);

    void setLook(const PanelLook& look); ///< From the next setAreas() on.

    /// Null for an unknown area; the one grid where there are no tabs.
    PageGrid* grid(const QString& area) const;

    const QStringList& areas() const { return m_areas; } ///< The tabs; empty: there are none.
    QString areaOf(const QWidget& widget) const;         ///< Empty: it stands on no tab.
    QAbstractButton* key(const QString& area) const;     ///< Of a tab; null: there is none.
    void bringIntoView(QWidget& widget); ///< Turns to its tab, and scrolls as far as it must.

    void setAreas(const QStringList& areas) override; ///< The tab that is seen stays, if it can.
    void place(QWidget* widget, const Cells& cells) override;
    void placeError(const QString& id, const QString& text, const Cells& cells) override;
    void release() override;
    void clear() override;

private:
    void build();
    QWidget* makePage(const QString& area);

    PanelLook m_look;
    QStringList m_areas;
    QWidget* m_content = nullptr; ///< The one page, or the tabs and their keys.
    QTabWidget* m_tabs = nullptr; ///< Null where there is one page.
    PageKeys* m_keys = nullptr;   ///< Likewise.
    QList<PageGrid*> m_grids;
};

} // namespace norvo
