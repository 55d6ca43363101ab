// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/cells/CellLines.h"

#include "host/window/layout/PageGrid.h"

#include <QWidget>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kGap = 10; // pixels, between two lines that are only thought of

CellLines::Line lineAt(const QVector<CellLines::Line>& lines, int index)
{
    if (lines.isEmpty() || index < 0) {
        return {};
    }
    const int beyond = std::max(0, index - (lines.size() - 1));
    CellLines::Line line = lines[index - beyond];
    line.begin += beyond * (line.size + kGap);
    return line;
}

/// The middle of the gap in front of it belongs to a line.
int nearest(const QVector<CellLines::Line>& lines, int place)
{
    int index =
        int(std::upper_bound(lines.cbegin(), lines.cend(), place,
                             [](int at, const CellLines::Line& line) { return at < line.begin; }) -
            lines.cbegin()) -
        1;
    if (index >= 0 && index + 1 < lines.size()) {
        const int end = lines[index].begin + lines[index].size;
        index += place >= (end + lines[index + 1].begin + 1) / 2 ? 1 : 0;
    }
    return std::max(0, index);
}

} // namespace

CellLines::CellLines(const QVector<Line>& rows, const QVector<Line>& columns, int mirrorWidth)
    : m_rows(rows), m_columns(columns), m_mirrorWidth(mirrorWidth)
{}

CellLines CellLines::of(const PageGrid& grid)
{
    const QRect inside = grid.contentsRect(); // Its margins are not alike.
    return {grid.rowLines(), grid.columnLines(),
            grid.parentWidget()->isRightToLeft() ? inside.left() + inside.right() + 1 : -1};
}

QRect CellLines::mirrored(const QRect& rect) const
{
    return m_mirrorWidth < 0
               ? rect
               : QRect(QPoint(m_mirrorWidth - rect.right() - 1, rect.top()), rect.size());
}

QRect CellLines::rect(const Cells& cells) const
{
    const Line top = lineAt(m_rows, cells.row);
    const Line bottom = lineAt(m_rows, cells.row + cells.rowspan - 1);
    const Line left = lineAt(m_columns, cells.column);
    const Line right = lineAt(m_columns, cells.column + cells.colspan - 1);
    return mirrored({left.begin, top.begin, right.begin + right.size - left.begin,
                     bottom.begin + bottom.size - top.begin});
}

QRect CellLines::rect(int row, int column) const
{
    Cells cell;
    cell.row = row;
    cell.column = column;
    return rect(cell);
}

Cells CellLines::at(const QPoint& place) const
{
    Cells cell;
    cell.row = nearest(m_rows, place.y());
    cell.column = nearest(m_columns, m_mirrorWidth < 0 ? place.x() : m_mirrorWidth - 1 - place.x());
    return cell;
}

Cells CellLines::within(const QRect& area) const
{
    Cells cells = at(area.topLeft());
    const Cells last = at(area.bottomRight());
    cells.rowspan = last.row - cells.row + 1;
    cells.colspan = std::abs(last.column - cells.column) + 1;
    cells.column = std::min(cells.column, last.column);
    return cells;
}

} // namespace norvo
