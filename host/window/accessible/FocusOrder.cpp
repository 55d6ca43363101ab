// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/accessible/FocusOrder.h"

#include "host/window/layout/GridSpan.h"
#include "host/window/marks/Overlay.h"

#include <QGridLayout>
#include <QHash>
#include <QMap>
#include <QWidget>

namespace norvo {

namespace {

/// Not what opens in a window of its own, such as the list of a drop-down.
bool takesTab(const QWidget& widget, const QWidget& cell)
{
    return (widget.focusPolicy() & Qt::TabFocus) && !widget.focusProxy() &&
           widget.window() == cell.window();
}

using Overlays = QMultiHash<QWidget*, Overlay*>; // By what they lie over.

Overlays overlaysOn(const QWidget& page)
{
    Overlays overlays;
    const auto found = page.findChildren<Overlay*>(QString(), Qt::FindDirectChildrenOnly);
    for (Overlay* const overlay : found) {
        overlays.insert(overlay->display(), overlay);
    }
    return overlays;
}

/// The cell, its parts, and what lies over it.
QWidgetList controlsOf(QWidget& cell, const Overlays& overlays)
{
    QWidgetList controls = QWidgetList{&cell} + cell.findChildren<QWidget*>();
    for (auto over = overlays.constFind(&cell); over != overlays.cend() && over.key() == &cell;
         ++over) {
        controls += (*over)->findChildren<QWidget*>();
    }
    return controls;
}

} // namespace

void orderFocus(const QGridLayout& grid)
{
    QMap<QPair<int, int>, QWidget*> byCell;
    for (int i = 0; i < grid.count(); ++i) {
        const GridSpan span = GridSpan::of(grid, i);
        byCell.insert({span.row, span.column}, grid.itemAt(i)->widget());
    }
    const Overlays overlays = overlaysOn(*grid.parentWidget());
    QWidget* before = nullptr;
    for (QWidget* const cell : qAsConst(byCell)) {
        for (QWidget* const control : controlsOf(*cell, overlays)) {
            if (takesTab(*control, *cell)) {
                if (before) {
                    QWidget::setTabOrder(before, control);
                }
                before = control;
            }
        }
    }
}

} // namespace norvo
