// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PointBlocks.h"

#include <deque>

namespace norvo::plot {

/// What a curve's points lie between in equal parts of its axis, kept from one drawing to the next:
/// only where points have come or gone is looked at again.
class KeptStretches
{
public:
    struct Part
    {
        Stretch stretch;
        double firstValue;
        double lastValue;
    };

    void clear(); ///< To be called when the blocks have begun anew.
    /// Of all points that the blocks are of. A stretch may reach a little into the part after its
    /// own. `width` of a part: in keys; another one than before costs a look at all blocks.
    const std::deque<Part>& update(PointBlocks::Points points, const PointBlocks& blocks,
                                   double width);

    const std::deque<Part>& parts() const { return m_parts; } ///< As of the last update.
    qint64 endNumber() const { return m_end; }                ///< After the last point of them.
    /// Another one whenever parts but the first and the last have changed. No two objects ever have
    /// the same one, but for 0 before there are parts.
    quint64 generation() const { return m_generation; }

private:
    void dropBefore(qint64 number, PointBlocks::Points points, const PointBlocks& blocks);
    void addFrom(int next, PointBlocks::Points points, const PointBlocks& blocks);

    std::deque<Part> m_parts;
    double m_width = 0;
    qint64 m_begin = 0; ///< Numbers of the points that they are of.
    qint64 m_end = 0;
    quint64 m_generation = 0;
};

} // namespace norvo::plot
