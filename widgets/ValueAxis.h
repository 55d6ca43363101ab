// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace norvo {

/// What turns a value into a height in pixels.
struct ValueAxis
{
    double base = 0.0;  ///< Height of `min`.
    double min = 0.0;   ///< Value at the base.
    double range = 0.0; ///< From `min` to the value at the other end.
    double span = 0.0;  ///< Pixels of that range, upwards: heights shrink as values grow.

    double y(double value) const { return base - (value - min) / range * span; }
};

} // namespace norvo
