// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <iterator>

#ifdef QCUSTOMPLOT_VERSION
#include "widgets/DenseGraph.h"
#include "widgets/LegendEntry.h"
#include "widgets/PlotLists.h"
#include "widgets/TimeTicker.h"
#endif

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
/// |                     | setDateTimeFormat()                 | TimeTicker                      |
/// | keepNumbers()       | nothing                             | setTicker() with KeptLabels     |
/// | addItem()           | QCustomPlot::addItem()              | nothing: an item adds itself    |
/// | Graph               | QCPGraph                            | DenseGraph                      |
/// | removeDataBefore()  | QCPGraph::removeDataBefore()        | DenseGraph::dropBefore()        |
/// | addPoint()          | QCPGraph::addData(key, value)       | DenseGraph::append()            |
/// | addPlottable()      | QCustomPlot::addPlottable()         | nothing: it adds itself         |
/// | setSortedData()     | QCPGraph::setData(keys, values)     | DenseGraph::replace()           |
/// | LegendItem          | QCPPlottableLegendItem              | LegendEntry                     |
/// | drawAllAtOnce()     | nothing                             | QCPLayer::setMode()             |
/// | ListsSetAside       | nothing                             | ListsSetAside                   |
/// | ChildrenSetAside    | nothing                             | ChildrenSetAside                |
namespace norvo::plot {

#ifdef QCUSTOMPLOT_VERSION

constexpr auto kReplotQueued = QCustomPlot::rpQueuedReplot;
constexpr auto kReplotHint = QCustomPlot::rpRefreshHint;
constexpr auto kReplotWithinPaint = QCustomPlot::rpQueuedRefresh; ///< Never paints at once.

/// Labels in local time; `format` as QDateTime::toString() reads it.
inline void setDateTimeLabels(QCPAxis* axis, const QString& format)
{
    const auto ticker = QSharedPointer<TimeTicker>::create(axis);
    ticker->setDateTimeFormat(format);
    axis->setTicker(ticker);
}

/// Writes the numbers of an axis once.
inline void keepNumbers(QCPAxis* axis)
{
    axis->setTicker(QSharedPointer<KeptLabels<QCPAxisTicker>>::create());
}

inline void addItem(QCustomPlot*, QCPAbstractItem*) {}

inline void addPlottable(QCustomPlot*, QCPAbstractPlottable*) {}

using Graph = DenseGraph;

using LegendItem = LegendEntry;

/// What lies over the curves is drawn with them: a picture of its own for that layer, on which
/// there is hardly ever anything, would be blended with each refresh.
inline void drawAllAtOnce(QCustomPlot& plot)
{
    plot.layer("overlay")->setMode(QCPLayer::lmLogical);
}

inline void removeDataBefore(Graph* graph, double key)
{
    graph->dropBefore(key);
}

inline void addPoint(Graph* graph, double key, double value)
{
    graph->append(key, value);
}

inline void setSortedData(Graph* graph, const QVector<double>& keys, const QVector<double>& values)
{
    graph->replace(keys, values);
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

using LegendItem = QCPPlottableLegendItem;

inline void drawAllAtOnce(QCustomPlot&) {}

inline void keepNumbers(QCPAxis*) {}

struct ListsSetAside
{
    explicit ListsSetAside(QCustomPlot&) {}
};

using ChildrenSetAside = ListsSetAside;

inline void addItem(QCustomPlot* plot, QCPAbstractItem* item)
{
    plot->addItem(item);
}

inline void addPlottable(QCustomPlot* plot, QCPAbstractPlottable* plottable)
{
    plot->addPlottable(plottable);
}

inline void removeDataBefore(Graph* graph, double key)
{
    graph->removeDataBefore(key);
}

inline void addPoint(Graph* graph, double key, double value)
{
    graph->addData(key, value);
}

inline void setSortedData(Graph* graph, const QVector<double>& keys, const QVector<double>& values)
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
