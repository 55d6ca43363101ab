// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <QDateTime>
#include <QFontMetrics>

/// What the host asks of a plot and the two generations of the plot library's interface name
/// differently. Only the header of generation 2 defines QCUSTOMPLOT_VERSION.
namespace norvo::plots {

#ifdef QCUSTOMPLOT_VERSION

constexpr auto kReplotQueued = QCustomPlot::rpQueuedReplot;

/// From now on `copy` shows the points of `source` as they are; nothing is copied.
inline void share(QCPGraph& copy, const QCPGraph& source)
{
    copy.setData(source.data());
}

/// Makes the points its own: they stay as they are now.
inline void detach(QCPGraph& graph)
{
    graph.setData(QSharedPointer<QCPGraphDataContainer>::create(*graph.data()));
}

/// The first point that is not before `key`; the end where there is none.
inline auto firstFrom(const QCPGraph& graph, double key)
{
    return graph.data()->findBegin(key, false);
}

/// All points behind `key`.
inline void dropAfter(QCPGraph& graph, double key)
{
    graph.data()->removeAfter(key);
}

inline void add(QCustomPlot&, QCPAbstractPlottable*) {}
inline void add(QCustomPlot&, QCPAbstractItem*) {}

/// Empty: the axis shows no times.
inline QString timeFormat(const QCPAxis& axis)
{
    const auto ticker = axis.ticker().dynamicCast<QCPAxisTickerDateTime>();
    return ticker ? ticker->dateTimeFormat() : QString();
}

inline void setTimeFormat(QCPAxis& axis, const QString& format)
{
    const auto ticker = QSharedPointer<QCPAxisTickerDateTime>::create();
    ticker->setDateTimeFormat(format);
    axis.setTicker(ticker);
}

/// Fewer times below the plot than usual where their texts would run into each other.
inline void spaceTimes(QCustomPlot& plot)
{
    QCPAxis& axis = *plot.xAxis;
    const auto ticker = axis.ticker().dynamicCast<QCPAxisTickerDateTime>();
    if (!ticker) {
        return;
    }
    const QMargins margins = axis.axisRect()->margins();
    const int width = qMax(1, plot.viewport().width() - margins.left() - margins.right());
    const QString text = QDateTime::currentDateTime().toString(ticker->dateTimeFormat()) + ' ';
    const int textWidth = QFontMetrics(axis.tickLabelFont()).horizontalAdvance(text);
    constexpr int usualCount = 5;
    for (int count = usualCount; count > 0; --count) {
        ticker->setTickCount(count);
        QVector<double> times;
        ticker->generate(axis.range(), QLocale(), 'g', 6, times, nullptr, nullptr);
        if (times.size() < 2 || (times[1] - times[0]) / axis.range().size() * width >= textWidth) {
            return;
        }
    }
}

/// Draws on as many pixels as the other.
inline void matchPixels(QCustomPlot& plot, const QCustomPlot& other)
{
    plot.setBufferDevicePixelRatio(other.bufferDevicePixelRatio());
    plot.setPlottingHints(other.plottingHints());
}

#else

constexpr auto kReplotQueued = QCustomPlot::rpQueued;

inline void share(QCPGraph& copy, const QCPGraph& source)
{
    copy.setData(source.data(), true);
}

inline void detach(QCPGraph&) {}

inline auto firstFrom(const QCPGraph& graph, double key)
{
    const QCPDataMap& points = *graph.data();
    return points.lowerBound(key);
}

inline void dropAfter(QCPGraph& graph, double key)
{
    graph.removeDataAfter(key);
}

inline void add(QCustomPlot& plot, QCPAbstractPlottable* plottable)
{
    plot.addPlottable(plottable);
}

inline void add(QCustomPlot& plot, QCPAbstractItem* item)
{
    plot.addItem(item);
}

inline QString timeFormat(const QCPAxis& axis)
{
    return axis.tickLabelType() == QCPAxis::ltDateTime ? axis.dateTimeFormat() : QString();
}

inline void setTimeFormat(QCPAxis& axis, const QString& format)
{
    axis.setTickLabelType(QCPAxis::ltDateTime);
    axis.setDateTimeFormat(format);
}

inline void spaceTimes(QCustomPlot&) {}

inline void matchPixels(QCustomPlot&, const QCustomPlot&) {}

#endif

inline auto pointsEnd(const QCPGraph& graph)
{
    return graph.data()->constEnd();
}

inline auto pointsBegin(const QCPGraph& graph)
{
    return graph.data()->constBegin();
}

} // namespace norvo::plots
