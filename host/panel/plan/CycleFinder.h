// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QHash>

#include <functional>

namespace norvo {

/// Walks along the connections of a panel, depth first, to find those that close a cycle of devices
/// and the device of which a value would multiply beyond bounds.
///
/// The walk begins at the first connection of the file and goes on in the file's order. A
/// connection that leads back to a device on the path to it closes a cycle; without these no cycle
/// is left. Connections from or to unknown ids are left aside.
///
/// A value can run round a cycle only where each of its devices passes it on. The first walk
/// therefore leaves out the devices that do not, and finds those cycles; a second one finds what
/// closes any other.
class CycleFinder
{
public:
    /// Whether devices of this type send nothing that follows from what they are given without
    /// more: a child program, for one, answers when and if it wants.
    using BreaksCycles = std::function<bool(const QString& type)>;

    /// Calls that one value may make through direct connections. No panel reaches it unless several
    /// paths lead from one device to another, and from there on.
    static constexpr int kMaxCalls = 100000;
    static constexpr int kMaxDevicesNamed =
        12; ///< In a cycle; of a longer one the middle is left out.

    /// Without `breaksCycles` every device counts as one that passes values on.
    explicit CycleFinder(const PanelDescription& description,
                         const BreaksCycles& breaksCycles = {});

    bool closes(int connection) const { return m_cycles.contains(connection); }
    /// The devices round the cycle that this connection closes, the one that it leads to first and
    /// last: "a -> b -> c -> a" for a connection from c to a. Empty if it closes none, or only such
    /// as a device breaks.
    QString cycle(int connection) const { return m_cycles.value(connection); }
    /// The place in the description of the device of which one value would make more than kMaxCalls
    /// calls, the first one to be found; -1: none.
    int multiplier() const { return m_multiplier; }

private:
    QHash<int, QString> m_cycles; ///< By the connection's place in the description.
    int m_multiplier = -1;
};

} // namespace norvo
