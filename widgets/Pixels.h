// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <cmath>

/// A position in pixels cut toward zero. What lies further out than any screen is drawn at that
/// distance, and what is no number at 0, so that no drawing overflows.
inline int toPixel(double position)
{
    constexpr double furthest = 1e6;
    return std::isnan(position) ? 0 : int(qBound(-furthest, position, furthest));
}
