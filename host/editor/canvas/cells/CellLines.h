// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Placement.h"
#include "host/window/layout/PageGrid.h"

#include <QRect>
#include <QVector>

namespace norvo {

/// Where the rows and columns of a page lie on it, in pixels. Behind the last one others of its
/// size are thought of.
class CellLines
{
public:
    using Line = PageGrid::Line;

    CellLines() = default;
    /// `mirrorWidth`: twice the middle of a page whose columns go from the right; -1: from the
    /// left.
    CellLines(const QVector<Line>& rows, const QVector<Line>& columns, int mirrorWidth = -1);
    static CellLines of(const PageGrid& grid);

    int rows() const { return m_rows.size(); }
    int columns() const { return m_columns.size(); }
    QRect rect(const Cells& cells) const;
    QRect rect(int row, int column) const;
    Cells at(const QPoint& place) const; ///< The cell there, or the nearest; without an area.
    /// The cells that have a part of `area`, as one block; within the page's lines.
    Cells within(const QRect& area) const;

private:
    QRect mirrored(const QRect& rect) const;

    QVector<Line> m_rows;
    QVector<Line> m_columns;
    int m_mirrorWidth = -1;
};

} // namespace norvo
