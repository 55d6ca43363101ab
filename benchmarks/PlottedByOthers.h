// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPen>
#include <QPointF>
#include <QVector>
#include <QWidget>

#include <memory>

class QCustomPlot;

/// The same curves as another library draws them, for comparison.
class PlottedByOther
{
public:
    virtual ~PlottedByOther() = default;

    virtual QWidget* widget() = 0; ///< Owned by this.
    virtual void addCurve(const QVector<QPointF>& points, const QPen& pen) = 0;
    /// New points at the end of a curve, and what was before `begin` forgotten. The widget of a
    /// library that cannot do so goes on with what it has.
    virtual void advance(int /*curve*/, const QVector<QPointF>& /*points*/, double /*begin*/) {}
    virtual void setTimeWindow(double from, double to) = 0; ///< Drawn by the event loop.
};

/// By our own plot library in a plot that does nothing else. Grid, value axis and names as in
/// `model`.
std::unique_ptr<PlottedByOther> plottedByBarePlot(QCustomPlot& model);

/// What the pixels cost at least: axes, grid and names of a bare plot without points, and one span
/// for each pixel column and curve, kept as the points arrive.
std::unique_ptr<PlottedByOther> plottedBySpans(QCustomPlot& model);

/// Null where the library was missing when this was built. Lines are antialiased where asked for.
std::unique_ptr<PlottedByOther> plottedByQwt(bool antialiased);
std::unique_ptr<PlottedByOther> plottedByCharts();
