// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PointBlocks.h"

namespace norvo::plot {

/// A graph that finds the range of its values in a time that hardly grows with its points, where
/// they come by append() and go by dropBefore(). NaN is no value.
///
/// Whatever else changes the points, through the library's own calls, is seen by their number,
/// place, first and last one, and costs a look at all of them. A value that is written over in
/// place, between these two, is not seen.
class DenseGraph : public QCPGraph
{
public:
    using QCPGraph::QCPGraph;

    void append(double key, double value); ///< May be before others, which costs that look.
    void dropBefore(double key);
    void replace(const QVector<double>& keys, const QVector<double>& values); ///< Sorted by key.

    QCPRange getValueRange(bool& found, QCP::SignDomain domain,
                           const QCPRange& keys) const override;

private:
    /// How points are known again.
    struct Mark
    {
        const QCPGraphData* begin = nullptr;
        int count = 0;
        QCPGraphData first;
        QCPGraphData last;
    };

    Mark mark() const;
    bool areBlocksTrue() const; ///< Whether they are of the points as they are.
    const PointBlocks& blocks() const;

    mutable PointBlocks m_blocks;
    mutable Mark m_known; ///< What they are of.
};

} // namespace norvo::plot
