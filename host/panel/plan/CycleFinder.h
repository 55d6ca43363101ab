#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QHash>
#include <QStringList>

namespace norvo {

/// Finds the arrows that close a circle of devices.
///
/// The arrows are taken in the order of the file; one that leads to a device from which the arrows
/// before it lead back closes a circle, and is not followed any further. An arrow from a device to
/// itself always does. Arrows from or to unknown ids are left aside.
class CycleFinder
{
public:
    explicit CycleFinder(const PanelDescription& description);

    bool closes(int arrow) const { return m_ways.contains(arrow); }
    /// The devices round the circle that this arrow closes, by the shortest way; the arrow's own
    /// end comes first and last: "a", "b", "c", "a" for an arrow from c to a. Empty if it closes
    /// none.
    QStringList way(int arrow) const { return m_ways.value(arrow); }

private:
    QHash<int, QStringList> m_ways; ///< By the arrow's place in the description.
};

} // namespace norvo
