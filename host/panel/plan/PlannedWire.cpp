// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/PlannedWire.h"

#include <QHash>

#include <tuple>

namespace norvo {

bool PlannedWire::operator==(const PlannedWire& other) const
{
    return std::tie(from, signal, to, slot, isQueued) ==
           std::tie(other.from, other.signal, other.to, other.slot, other.isQueued);
}

uint qHash(const PlannedWire& wire, uint seed)
{
    for (const QString* part : {&wire.from, &wire.signal, &wire.to, &wire.slot}) {
        seed = qHash(*part, seed);
    }
    return seed;
}

} // namespace norvo
