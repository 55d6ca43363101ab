// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <deque>
#include <limits>
#include <vector>

namespace norvo::plot {

/// What the points of a stretch of a curve lie between.
struct Stretch
{
    int count = 0;
    bool hasGaps = false; ///< A value is no number or infinite.
    double firstKey = 0;
    double lastKey = 0;
    double least = std::numeric_limits<double>::infinity(); ///< Above `greatest`: no values.
    double greatest = -std::numeric_limits<double>::infinity();

    void add(const Stretch& next) ///< That follows on it.
    {
        firstKey = count == 0 ? next.firstKey : firstKey;
        lastKey = next.lastKey;
        least = next.least < least ? next.least : least;
        greatest = next.greatest > greatest ? next.greatest : greatest;
        hasGaps |= next.hasGaps;
        count += next.count;
    }
};

/// Keeps what blocks of points lie between, and blocks of blocks, and so on, so that long
/// stretches can be looked at without looking at each point.
///
/// The points themselves are the caller's, who says when one has come at the end or some have gone
/// from the front. That costs the same however many there are.
class PointBlocks
{
public:
    using Points = QCPGraphDataContainer::const_iterator;

    int count() const { return int(m_end - m_begin); }
    qint64 firstNumber() const { return m_begin; } ///< Points keep theirs until clear().
    void clear();
    void pointAdded(Points points); ///< `points`: the first of those that there are now.
    void pointsDropped(int count);  ///< At most as many as there were.

    /// The points from one on, at most to before `end`, whose keys are below `limit`, and those up
    /// to `farLimit` that are in a block with them. At least one. Counted from the first point.
    Stretch stretchAt(Points points, int begin, int end, double limit, double farLimit) const;
    Stretch all(Points points) const;

private:
    /// Blocks of one size that are complete; the foremost may have lost points.
    struct Level
    {
        std::deque<Stretch> blocks;
        qint64 dropped = 0; ///< Blocks that went before the first.
    };

    const Stretch* longestAt(int index, int end, double limit) const; ///< Null: none begins there.
    Stretch blockOf(size_t level, Points points, qint64 begin, qint64 end) const;

    // Points have numbers that they keep while others go.
    qint64 m_begin = 0;
    qint64 m_end = 0;
    std::vector<Level> m_levels; ///< Of the smallest blocks first.
};

} // namespace norvo::plot
