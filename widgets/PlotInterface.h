#pragma once

#include <qcustomplot.h>

#include <algorithm>

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
/// | hasData()           | QCPGraph::data(), a map of QCPData  | QCPGraph::data(), a container   |
/// | lastKey()           | the key of the map's last entry     | the container's last point      |
/// | removeDataBefore()  | QCPGraph::removeDataBefore()        | QCPDataContainer::removeBefore()|
/// | addCurve()          | QCustomPlot::addGraph()             | a QCPGraph of our own           |
/// | setSortedData()     | QCPGraph::setData(keys, values)     | the same, told they are sorted  |
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

/// A graph that finds its range of values in a fraction of the library's time; NaN is no value.
class Curve : public QCPGraph
{
public:
    using QCPGraph::QCPGraph;

    QCPRange getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& keys) const override
    {
        if (domain != QCP::sdBoth || keys != QCPRange()) {
            return QCPGraph::getValueRange(found, domain, keys);
        }
        // Several at a time, as each comparison would wait for the one before.
        constexpr int lanes = 4;
        double lowest[lanes] = {qInf(), qInf(), qInf(), qInf()};
        double highest[lanes] = {-qInf(), -qInf(), -qInf(), -qInf()};
        const auto end = mDataContainer->constEnd();
        auto point = mDataContainer->constBegin();
        const auto take = [&](int lane, double value) {
            lowest[lane] = value < lowest[lane] ? value : lowest[lane];
            highest[lane] = value > highest[lane] ? value : highest[lane];
        };
        for (; end - point >= lanes; point += lanes) {
            take(0, point[0].value);
            take(1, point[1].value);
            take(2, point[2].value);
            take(3, point[3].value);
        }
        for (; point != end; ++point) {
            take(0, point->value);
        }
        const double lower = *std::min_element(lowest, lowest + lanes);
        const double upper = *std::max_element(highest, highest + lanes);
        found = lower <= upper;
        return found ? QCPRange(lower, upper) : QCPRange();
    }
};

inline QCPGraph* addCurve(QCustomPlot* plot)
{
    // On its own the library asks every legend entry whether it has the curve already.
    plot->setAutoAddPlottableToLegend(false);
    auto* curve = new Curve(plot->xAxis, plot->yAxis);
    plot->setAutoAddPlottableToLegend(true);
    QCPLegend* legend = plot->legend;
    legend->addElement(legend->rowCount(), 0, new QCPPlottableLegendItem(legend, curve));
    return curve;
}

inline bool hasData(const QCPGraph* graph)
{
    return !graph->data()->isEmpty();
}

/// The graph must have data.
inline double lastKey(const QCPGraph* graph)
{
    return (graph->data()->constEnd() - 1)->key;
}

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

inline void addItem(QCustomPlot* plot, QCPAbstractItem* item)
{
    plot->addItem(item);
}

inline QCPGraph* addCurve(QCustomPlot* plot)
{
    return plot->addGraph();
}

inline bool hasData(const QCPGraph* graph)
{
    return !graph->data()->isEmpty();
}

inline double lastKey(const QCPGraph* graph)
{
    return (--graph->data()->constEnd()).key();
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

} // namespace norvo::plot
