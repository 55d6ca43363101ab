// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

/// A place in a text file. Lines and columns count from 1, columns in characters; 0: unknown.
struct Place
{
    int line = 0;
    int column = 0;
};

/// "line 3, column 5"
inline QString toString(const Place& place)
{
    return QString("line %1, column %2").arg(place.line).arg(place.column);
}

} // namespace norvo
