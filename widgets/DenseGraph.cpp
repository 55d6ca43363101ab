// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DenseGraph.h"

#include <cstring>

namespace norvo::plot {

namespace {

bool isSame(const QCPGraphData& a, const QCPGraphData& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0; // NaN equals itself
}

} // namespace

void DenseGraph::append(double key, double value)
{
    const bool wereTrue = areBlocksTrue();
    const bool isLast = mDataContainer->isEmpty() || !(key < (mDataContainer->constEnd() - 1)->key);
    addData(key, value);
    if (wereTrue && isLast) {
        m_blocks.pointAdded(mDataContainer->constBegin());
        m_known = mark();
    }
}

void DenseGraph::dropBefore(double key)
{
    const bool wereTrue = areBlocksTrue();
    const int before = mDataContainer->size();
    mDataContainer->removeBefore(key);
    if (wereTrue) {
        m_blocks.pointsDropped(before - mDataContainer->size());
        m_known = mark();
    }
}

void DenseGraph::replace(const QVector<double>& keys, const QVector<double>& values)
{
    setData(keys, values, true);
    m_known = {};
}

QCPRange DenseGraph::getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& keys) const
{
    if (domain != QCP::sdBoth || keys != QCPRange()) {
        return QCPGraph::getValueRange(found, domain, keys);
    }
    const Stretch all = blocks().all(mDataContainer->constBegin());
    found = all.least <= all.greatest;
    return found ? QCPRange(all.least, all.greatest) : QCPRange();
}

DenseGraph::Mark DenseGraph::mark() const
{
    const QCPGraphDataContainer& points = *mDataContainer;
    if (points.isEmpty()) {
        return {};
    }
    return {points.constBegin(), points.size(), *points.constBegin(), *(points.constEnd() - 1)};
}

bool DenseGraph::areBlocksTrue() const
{
    const Mark now = mark();
    return now.begin == m_known.begin && now.count == m_known.count &&
           now.count == m_blocks.count() && isSame(now.first, m_known.first) &&
           isSame(now.last, m_known.last);
}

const PointBlocks& DenseGraph::blocks() const
{
    if (!areBlocksTrue()) {
        m_blocks.clear();
        for (int i = 0; i < mDataContainer->size(); ++i) {
            m_blocks.pointAdded(mDataContainer->constBegin());
        }
        m_known = mark();
    }
    return m_blocks;
}

} // namespace norvo::plot
