// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QGridLayout;

namespace norvo {

/// The cells that an item of a grid covers.
struct GridSpan
{
    static GridSpan of(const QGridLayout& grid, int index);

    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
};

} // namespace norvo
