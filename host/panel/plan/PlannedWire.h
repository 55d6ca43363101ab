// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

/// A connection as it will be made. The signatures are normalised.
struct PlannedWire
{
    QString from; ///< Id.
    QString signal;
    QString to; ///< Id.
    QString slot;
    bool isQueued = false; ///< It closes a cycle.

    bool operator==(const PlannedWire& other) const;
};

uint qHash(const PlannedWire& wire, uint seed = 0);

} // namespace norvo
