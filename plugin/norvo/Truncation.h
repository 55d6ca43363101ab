// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <limits>

namespace norvo {

/// Cut toward zero; beyond the range of int its nearest end, 0 for NaN.
inline int truncatedToInt(double number)
{
    constexpr int lowest = std::numeric_limits<int>::lowest();
    constexpr int highest = std::numeric_limits<int>::max();
    if (number >= highest) {
        return highest;
    }
    if (number <= lowest) {
        return lowest;
    }
    return number == number ? int(number) : 0;
}

} // namespace norvo
