// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PointBlocks.h"

#include <cmath>

namespace norvo::plot {

namespace {

constexpr qint64 kPoints = 32; ///< Of a block.
constexpr qint64 kBlocks = 4;  ///< Of a larger one.

/// Elements of a block of a level.
qint64 sizeOf(size_t level)
{
    return level == 0 ? kPoints : kBlocks;
}

Stretch ofPoint(const QCPGraphData& point)
{
    Stretch stretch{1, !std::isfinite(point.value), point.key, point.key};
    if (!std::isnan(point.value)) {
        stretch.least = point.value;
        stretch.greatest = point.value;
    }
    return stretch;
}

} // namespace

void PointBlocks::clear()
{
    m_begin = 0;
    m_end = 0;
    m_levels.clear();
}

void PointBlocks::pointAdded(Points points)
{
    ++m_end;
    qint64 elements = m_end;
    for (size_t level = 0; elements % sizeOf(level) == 0; ++level) {
        if (level == m_levels.size()) {
            m_levels.emplace_back();
        }
        const qint64 size = sizeOf(level);
        m_levels[level].blocks.push_back(blockOf(level, points, elements - size, elements));
        elements /= size;
    }
}

void PointBlocks::pointsDropped(int count)
{
    m_begin += count;
    qint64 whole = m_begin;
    for (size_t i = 0; i < m_levels.size(); ++i) {
        Level& level = m_levels[i];
        whole /= sizeOf(i);
        while (level.dropped < whole && !level.blocks.empty()) {
            level.blocks.pop_front();
            ++level.dropped;
        }
    }
}

const Stretch* PointBlocks::longestAt(int index, int end, double limit) const
{
    const qint64 number = m_begin + index;
    const Stretch* longest = nullptr;
    qint64 size = kPoints;
    for (const Level& level : m_levels) {
        if (number % size != 0 || index + size > end) {
            break;
        }
        const Stretch& block = level.blocks[size_t(number / size - level.dropped)];
        if (!(block.lastKey <= limit)) {
            break;
        }
        longest = &block;
        size *= kBlocks;
    }
    return longest;
}

Stretch PointBlocks::stretchAt(Points points, int begin, int end, double limit,
                               double farLimit) const
{
    Stretch sum;
    int next = begin;
    do {
        const Stretch* block =
            (m_begin + next) % kPoints == 0 ? longestAt(next, end, farLimit) : nullptr;
        sum.add(block ? *block : ofPoint(*(points + next)));
        next = begin + sum.count;
    } while (next < end && (points + next)->key < limit);
    return sum;
}

Stretch PointBlocks::all(Points points) const
{
    constexpr double anywhere = std::numeric_limits<double>::infinity();
    return count() == 0 ? Stretch() : stretchAt(points, 0, count(), anywhere, anywhere);
}

/// Of points where the level is 0, else of blocks of the level below. Those that have been dropped
/// are left out: nobody asks for such a block.
Stretch PointBlocks::blockOf(size_t level, Points points, qint64 begin, qint64 end) const
{
    Stretch block;
    if (level == 0) {
        for (qint64 i = qMax(begin, m_begin); i < end; ++i) {
            block.add(ofPoint(*(points + (i - m_begin))));
        }
        return block;
    }
    const Level& below = m_levels[level - 1];
    for (qint64 i = qMax(begin, below.dropped); i < end; ++i) {
        block.add(below.blocks[size_t(i - below.dropped)]);
    }
    return block;
}

} // namespace norvo::plot
