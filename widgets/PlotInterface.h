// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <iterator>

/// The plot library's calls that differ between its two interface generations. Only the header of
/// generation 2 defines QCUSTOMPLOT_VERSION. Nothing else in this folder may name a call that only
/// one of them has.
///
/// | here                | generation 1                        | generation 2                    |
/// |---------------------|-------------------------------------|---------------------------------|
/// | kReplotQueued       | rpQueued                            | rpQueuedReplot                  |
/// | kReplotHint         | rpHint                              | rpRefreshHint                   |
/// | kReplotWithinPaint  | rpQueued                            | rpQueuedRefresh                 |
/// | setDateTimeLabels() | setTickLabelType(ltDateTime),       | setTicker() with a              |
/// |                     | setDateTimeFormat()                 | QCPAxisTickerDateTime           |
/// | addItem()           | QCustomPlot::addItem()              | nothing: an item adds itself    |
/// | Graph               | QCPGraph                            | with a faster search for ranges |
/// | removeDataBefore()  | QCPGraph::removeDataBefore()        | QCPDataContainer::removeBefore()|
/// | addPlottable()      | QCustomPlot::addPlottable()         | nothing: it adds itself         |
/// | setSortedData()     | QCPGraph::setData(keys, values)     | the same, marked as sorted      |
namespace norvo::plot {

#ifdef QCUSTOMPLOT_VERSION

constexpr auto kReplotQueued = QCustomPlot::rpQueuedReplot;
constexpr auto kReplotHint = QCustomPlot::rpRefreshHint;
constexpr auto kReplotWithinPaint = QCustomPlot::rpQueuedRefresh; ///< Never paints at once.

/// Labels in local time; `format` as QDateTime::toString() reads it.
inline void setDateTimeLabels(QCPAxis* axis, const QString& format)
{
    const auto ticker = QSharedPointer<QCPAxisTickerDateTime>::create();
    ticker->setDateTimeFormat(format);
    axis->setTicker(ticker);
}

inline void addItem(QCustomPlot*, QCPAbstractItem*) {}

inline void addPlottable(QCustomPlot*, QCPAbstractPlottable*) {}

/// Finds the range of its values in a fraction of the library's time; NaN is no value.
class Graph : public QCPGraph
{
public:
    using QCPGraph::QCPGraph;

    QCPRange getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& keys) const override
    {
        if (domain != QCP::sdBoth || keys != QCPRange()) {
            return QCPGraph::getValueRange(found, domain, keys);
        }
        double lower = qInf();
        double upper = -qInf();
        for (const QCPGraphData& point : *mDataContainer) {
            lower = point.value < lower ? point.value : lower;
            upper = point.value > upper ? point.value : upper;
        }
        found = lower <= upper;
        return found ? QCPRange(lower, upper) : QCPRange();
    }
};

inline void removeDataBefore(QCPGraph* graph, double key)
{
    graph->data()->removeBefore(key);
}

inline void setSortedData(QCPGraph* graph, const QVector<double>& keys,
                          const QVector<double>& values)
{
    graph->setData(keys, values, true);
}

#else

constexpr auto kReplotQueued = QCustomPlot::rpQueued;
constexpr auto kReplotHint = QCustomPlot::rpHint;
constexpr auto kReplotWithinPaint = QCustomPlot::rpQueued;

inline void setDateTimeLabels(QCPAxis* axis, const QString& format)
{
    axis->setTickLabelType(QCPAxis::ltDateTime);
    axis->setDateTimeFormat(format);
}

using Graph = QCPGraph;

inline void addItem(QCustomPlot* plot, QCPAbstractItem* item)
{
    plot->addItem(item);
}

inline void addPlottable(QCustomPlot* plot, QCPAbstractPlottable* plottable)
{
    plot->addPlottable(plottable);
}

inline void removeDataBefore(QCPGraph* graph, double key)
{
    graph->removeDataBefore(key);
}

inline void setSortedData(QCPGraph* graph, const QVector<double>& keys,
                          const QVector<double>& values)
{
    graph->setData(keys, values);
}

#endif

inline bool hasData(const QCPGraph* graph)
{
    return !graph->data()->isEmpty();
}

/// The graph must have data.
inline double lastKey(const QCPGraph* graph)
{
    return std::prev(graph->data()->constEnd())->key;
}

} // namespace norvo::plot
