// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/edit/KeepPlaces.h"

namespace norvo {

/// A row or column that comes or goes.
struct LineShift
{
    QString page;
    bool isRow = true;
    int line = 0;
    int by = 1; ///< -1: it goes.
};

/// Does so with all that stands behind it or reaches over it, and with the weights of the lines.
YamlEdit::Error shiftLines(YamlEdit& edit, const CellsById& cells, const LineShift& shift);

} // namespace norvo
