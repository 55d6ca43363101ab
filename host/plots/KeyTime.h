// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <cmath>

namespace norvo {

/// The key of a time graph for a time in milliseconds: seconds, both since the epoch.
inline double keyOf(qint64 milliseconds)
{
    return double(milliseconds) * 0.001;
}

/// Back again. Rounded: a thousand times a key may be a little less than what the key was made of.
inline qint64 millisecondsOf(double key)
{
    return std::llround(key * 1000);
}

} // namespace norvo
