// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/KeptStretches.h"

#include <cmath>
#include <limits>

namespace norvo::plot {

namespace {

KeptStretches::Part partOf(PointBlocks::Points points, int begin, const Stretch& stretch)
{
    const QCPGraphData& last = *(points + (begin + stretch.count - 1));
    return {stretch, (points + begin)->value, last.value};
}

} // namespace

void KeptStretches::clear()
{
    static quint64 last = 0;
    m_generation = ++last;
    m_parts.clear();
    m_begin = 0;
    m_end = 0;
}

const std::deque<KeptStretches::Part>&
KeptStretches::update(PointBlocks::Points points, const PointBlocks& blocks, double width)
{
    constexpr double same = 1e-6; // An axis that moves is not always as long to the last digit.
    if (!(std::abs(width - m_width) <= same * width)) {
        clear();
        m_width = width;
    }
    dropBefore(blocks.firstNumber(), points, blocks);
    if (!m_parts.empty()) {
        m_end -= m_parts.back().stretch.count; // It may grow.
        m_parts.pop_back();
    }
    addFrom(int(m_end - blocks.firstNumber()), points, blocks);
    return m_parts;
}

void KeptStretches::dropBefore(qint64 number, PointBlocks::Points points, const PointBlocks& blocks)
{
    constexpr double anywhere = std::numeric_limits<double>::infinity();
    while (!m_parts.empty() && m_begin + m_parts.front().stretch.count <= number) {
        m_begin += m_parts.front().stretch.count;
        m_parts.pop_front();
    }
    if (m_parts.empty()) {
        m_end = number;
    } else if (m_begin < number) {
        const int left = int(m_begin + m_parts.front().stretch.count - number);
        m_parts.front() = partOf(points, 0, blocks.stretchAt(points, 0, left, anywhere, anywhere));
    }
    m_begin = number;
}

void KeptStretches::addFrom(int next, PointBlocks::Points points, const PointBlocks& blocks)
{
    constexpr double finest = 0.25; // Of a part: so far a block may reach into the next one.
    while (next < blocks.count()) {
        const double limit = (std::floor((points + next)->key / m_width) + 1) * m_width;
        const Stretch stretch =
            blocks.stretchAt(points, next, blocks.count(), limit, limit + finest * m_width);
        m_parts.push_back(partOf(points, next, stretch));
        next += stretch.count;
    }
    m_end = blocks.firstNumber() + next;
}

} // namespace norvo::plot
