// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/cells/PageRoom.h"

#include "host/window/layout/GridSpan.h"
#include "host/window/layout/PageGrid.h"

#include <QWidget>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMostTargets = 20; // that empty lines together get; more would only be scrolled over

/// A line that something stands in alone, or across, is not empty.
QVector<bool> emptyLines(const QGridLayout& grid, int count, bool isRows)
{
    QVector<bool> isEmpty(count, true);
    for (int i = 0; i < grid.count(); ++i) {
        const GridSpan span = GridSpan::of(grid, i);
        const int first = isRows ? span.row : span.column;
        const int end = std::min(count, first + (isRows ? span.rows : span.columns));
        for (int line = first; line < end; ++line) {
            isEmpty[line] = false;
        }
    }
    return isEmpty;
}

QVector<int> leastSizes(const QVector<bool>& isEmpty, int target)
{
    const int count = int(std::count(isEmpty.cbegin(), isEmpty.cend(), true));
    const int size = std::min(target, kMostTargets * target / std::max(1, count));
    QVector<int> sizes;
    for (const bool one : isEmpty) {
        sizes.append(one ? size : target);
    }
    return sizes;
}

} // namespace

PageRoom::PageRoom(PageGrid& grid, int target, int rows, int columns)
    : m_grid(&grid), m_margins(grid.contentsMargins())
{
    const QVector<int> heights = leastSizes(emptyLines(grid, rows + 1, true), target);
    for (int row = 0; row < heights.size(); ++row) {
        grid.setRowMinimumHeight(row, heights[row]);
    }
    const QVector<int> widths = leastSizes(emptyLines(grid, columns + 1, false), target);
    for (int column = 0; column < widths.size(); ++column) {
        grid.setColumnMinimumWidth(column, widths[column]);
    }
    QMargins margins = m_margins;
    margins.setTop(m_margins.top() + target);
    const bool isMirrored = grid.parentWidget()->isRightToLeft();
    margins.setLeft(m_margins.left() + (isMirrored ? 0 : target));
    margins.setRight(m_margins.right() + (isMirrored ? target : 0));
    grid.setContentsMargins(margins);
}

PageRoom::~PageRoom()
{
    if (!m_grid) {
        return;
    }
    for (int row = 0; row < m_grid->rowCount(); ++row) {
        m_grid->setRowMinimumHeight(row, 0);
    }
    for (int column = 0; column < m_grid->columnCount(); ++column) {
        m_grid->setColumnMinimumWidth(column, 0);
    }
    m_grid->setContentsMargins(m_margins);
}

} // namespace norvo
