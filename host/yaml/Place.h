// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>
#include <utility>

namespace norvo {

/// Why the text at a place is part of a panel, where that is not its own file alone.
struct PlaceOrigin
{
    QString file;   ///< That holds the text, as messages name it.
    QString use;    ///< `in use p1 (line 40)`; empty outside of the uses of templates.
    QString prefix; ///< Of the ids that the use has made.
};

/// A place in a text file. Lines and columns count from 1, columns in characters; 0: unknown.
struct Place
{
    Place() = default;
    Place(int inLine, int atColumn, std::shared_ptr<const PlaceOrigin> from = {})
        : line(inLine), column(atColumn), origin(std::move(from))
    {}

    int line = 0;
    int column = 0;
    std::shared_ptr<const PlaceOrigin> origin; ///< Null for a place of the file at hand.
};

/// "line 3, column 5"
inline QString toString(const Place& place)
{
    return QString("line %1, column %2").arg(place.line).arg(place.column);
}

} // namespace norvo
