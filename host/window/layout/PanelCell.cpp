// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/PanelCell.h"

#include "host/window/layout/GridSpan.h"

#include <QGridLayout>
#include <QLabel>
#include <QTextEdit>
#include <QVector>
#include <QWidget>

namespace norvo {

namespace {

constexpr QMargins kPadding(12, 8, 12, 8); ///< Within a card.

struct Column
{
    bool grows = false;   ///< Something in it, or across it, is the better the wider it is.
    bool isFixed = false; ///< Something that stands in it alone is not.
};

/// Gives the width that is left to what is the better for it: a unit stays at its value.
void keepTogether(QGridLayout& grid)
{
    QVector<Column> columns(grid.columnCount());
    for (int i = 0; i < grid.count(); ++i) {
        const GridSpan span = GridSpan::of(grid, i);
        const bool grows = grid.itemAt(i)->expandingDirections() & Qt::Horizontal;
        for (int column = span.column; column < span.column + span.columns; ++column) {
            columns[column].grows |= grows;
            columns[column].isFixed |= !grows && span.columns == 1;
        }
    }
    for (int i = 0; i < columns.size(); ++i) {
        grid.setColumnStretch(i, columns[i].grows && !columns[i].isFixed ? 1 : 0);
    }
}

/// Of the text that breaks in the widget.
int lineHeight(const QWidget& widget)
{
    for (const QLabel* const label : widget.findChildren<QLabel*>()) {
        if (label->wordWrap()) {
            return label->fontMetrics().height();
        }
    }
    return widget.fontMetrics().height();
}

} // namespace

void PanelCell::examine()
{
    const int count = widget()->children().size();
    if (count != m_childCount) {
        m_childCount = count;
        m_parts = WidgetParts::of(*widget());
        if (auto* const grid = qobject_cast<QGridLayout*>(widget()->layout())) {
            keepTogether(*grid);
        }
        if (auto* const log = widget()->findChild<QTextEdit*>()) {
            log->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // its lines are broken once
        }
    }
}

QMargins PanelCell::padding() const
{
    return m_parts.standsOnCard ? kPadding : QMargins();
}

/// A need that grows on the screen is met with a quarter more, so that it is not soon to grow
/// again; the first one likewise, where it is that of a text `mayGrow`.
int PanelCell::keep(int& kept, int need, bool mayGrow) const
{
    const bool isFirst = kept < 0;
    if (isFirst && !wid->isVisible()) {
        return need;
    }
    if (need > kept) {
        kept = isFirst && !mayGrow ? need : need + need / 4;
    }
    return kept;
}

QSize PanelCell::keep(QSize& kept, const QSize& need, bool mayGrow) const
{
    const int width = keep(kept.rwidth(), need.width(), mayGrow);
    return {width, keep(kept.rheight(), need.height(), false)};
}

QSize PanelCell::sizeHint() const
{
    const QSize need = QWidgetItemV2::sizeHint().expandedTo({0, m_parts.leastHeight});
    return keep(m_hint, need.grownBy(padding()), m_parts.showsText);
}

QSize PanelCell::minimumSize() const
{
    const QSize need = QWidgetItemV2::minimumSize().expandedTo({0, m_parts.leastHeight});
    return keep(m_minimum, need.grownBy(padding()), false);
}

QSize PanelCell::maximumSize() const
{
    return {QLAYOUTSIZE_MAX, QLAYOUTSIZE_MAX};
}

Qt::Orientations PanelCell::expandingDirections() const
{
    return {};
}

int PanelCell::heightForWidth(int width) const
{
    const QMargins around = padding();
    const int inside = width - around.left() - around.right();
    auto kept = m_heights.find(width);
    if (kept == m_heights.end()) {
        kept = m_heights.insert(width, -1);
    }
    int need = QWidgetItemV2::heightForWidth(inside);
    if (*kept < 0 && need < 2 * lineHeight(*wid)) { // one line, which may get longer
        need = QWidgetItemV2::heightForWidth(inside * 4 / 5);
    }
    return keep(*kept, qMax(need, m_parts.leastHeight) + around.top() + around.bottom(), false);
}

void PanelCell::setGeometry(const QRect& area)
{
    if (area.width() != m_area.width()) {
        m_heights.clear();
    }
    m_area = area;
    QRect inner = area;
    if (!m_parts.wantsHeight) {
        const int height = hasHeightForWidth() ? heightForWidth(area.width()) : sizeHint().height();
        inner.setHeight(qMin(area.height(), height));
        inner.moveTop(area.top() + (area.height() - inner.height()) / 2);
    }
    QWidgetItemV2::setGeometry(inner.marginsRemoved(padding()));
}

} // namespace norvo
