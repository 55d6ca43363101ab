// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/layout/WidgetParts.h"

#include <QHash>
#include <QLayoutItem>
#include <QRect>

namespace norvo {

/// A widget in the grid of a page. What it needed once on the screen it asks for ever after, so
/// that the page stands still whatever the values do.
class PanelCell : public QWidgetItemV2
{
public:
    explicit PanelCell(QWidget* widget) : QWidgetItemV2(widget) {}

    const WidgetParts& parts() const { return m_parts; }
    QRect area() const { return m_area; } ///< Of the whole cell, on its page.

    /// Looks again at what the widget is made of: it is made of nothing when it is placed.
    void examine();

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;                    ///< Without limit.
    Qt::Orientations expandingDirections() const override; ///< None: the page has stretches.
    int heightForWidth(int width) const override;
    /// The widget gets no more height than it asks for, unless it wants height.
    void setGeometry(const QRect& area) override;

private:
    QMargins padding() const;
    int keep(int& kept, int need, bool mayGrow) const;
    QSize keep(QSize& kept, const QSize& need, bool mayGrow) const;

    WidgetParts m_parts;
    int m_childCount = -1; ///< When they were looked at.
    QRect m_area;
    mutable QSize m_hint; ///< The largest on the screen so far, as the other two.
    mutable QSize m_minimum;
    mutable QHash<int, int> m_heights; ///< By the width that they are for.
};

} // namespace norvo
