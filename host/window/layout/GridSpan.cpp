// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/GridSpan.h"

#include <QGridLayout>

namespace norvo {

GridSpan GridSpan::of(const QGridLayout& grid, int index)
{
    GridSpan span;
    grid.getItemPosition(index, &span.row, &span.column, &span.rows, &span.columns);
    return span;
}

} // namespace norvo
