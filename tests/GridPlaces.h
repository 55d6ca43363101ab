// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGridLayout>
#include <QString>

/// Where `widget` stands in `grid`: "row 1, column 0, 1 x 2, alignment 0x20", or that it does not.
inline QString placeOf(const QWidget* widget, const QGridLayout& grid)
{
    const int index = grid.indexOf(const_cast<QWidget*>(widget));
    if (index < 0) {
        return "not in the grid";
    }
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid.getItemPosition(index, &row, &column, &rows, &columns);
    return QString("row %1, column %2, %3 x %4, alignment 0x%5")
        .arg(row)
        .arg(column)
        .arg(rows)
        .arg(columns)
        .arg(int(grid.itemAt(index)->alignment()), 0, 16);
}
