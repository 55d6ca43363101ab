// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>

namespace norvo {

/// The most digits after the point that a double can have.
constexpr int kMaxDecimals = 1074;

/// `precision`, but no more than a number can need: further digits would only fill memory with
/// zeros. A negative precision is left to whatever writes the number.
inline int decimals(int precision)
{
    return std::min(precision, kMaxDecimals);
}

} // namespace norvo
