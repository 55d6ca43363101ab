// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace norvo {

/// Cut toward zero; beyond the range of int its nearest end, 0 for NaN.
inline int truncatedToInt(double number)
{
    constexpr double lowest = std::numeric_limits<int>::lowest();
    constexpr double highest = std::numeric_limits<int>::max();
    return std::isnan(number) ? 0 : int(std::clamp(number, lowest, highest));
}

} // namespace norvo
