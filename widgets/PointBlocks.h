// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <deque>
#include <limits>
#include <vector>

namespace norvo::plot {

/// What the values of a stretch of a curve lie between. NaN is no value.
struct Stretch
{
    int count = 0;
    double least = std::numeric_limits<double>::infinity(); ///< Above `greatest`: no values.
    double greatest = -std::numeric_limits<double>::infinity();

    void add(const Stretch& other);
};

/// Keeps what the values of blocks of points lie between, and of blocks of blocks, and so on, so
/// that what all of them lie between is known without a look at each.
///
/// The points themselves are the caller's, who says when one has come at the end or some have gone
/// from the front. That costs the same however many there are.
class PointBlocks
{
public:
    using Points = QCPGraphDataContainer::const_iterator;

    int count() const { return int(m_end - m_begin); }
    void clear();
    void pointAdded(Points points); ///< `points`: the first of those that there are now.
    void pointsDropped(int count);  ///< At most as many as there were.

    Stretch all(Points points) const;

private:
    /// Blocks of one size that are complete; the foremost may have lost points.
    struct Level
    {
        std::deque<Stretch> blocks;
        qint64 dropped = 0; ///< Blocks that went before the first.
    };

    Stretch longestAt(Points points, int index) const;
    Stretch blockOf(size_t level, Points points, qint64 begin, qint64 end) const;

    // Points have numbers that they keep while others go.
    qint64 m_begin = 0;
    qint64 m_end = 0;
    std::vector<Level> m_levels; ///< Of the smallest blocks first.
};

} // namespace norvo::plot
