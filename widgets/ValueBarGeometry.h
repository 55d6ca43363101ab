// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPolygon>
#include <QRect>
#include <QSize>

/// Where the parts of the value bar lie, in the widget's pixels.
namespace norvo::valuebar {

constexpr int kMargin = 5;
constexpr int kCornerRadius = 10;

QRect panel(const QSize& widget); ///< The light rounded panel; empty for a widget too small.
/// The panel without the rows of its rounded corners; empty for one too low.
QRect panelRowsBetweenCorners(const QSize& widget);
QRect panelColumnsBetweenCorners(const QSize& widget); ///< Likewise.
/// The scale's region at the bottom of the panel; `scaleHeight` is its share of the panel.
QRect scaleRegion(const QSize& widget, double scaleHeight);
/// The pointer onto a scale from `start` to `end`, pointing down; `arrowHeight` is its share of
/// the panel's height and `normalised` the position from 0 to 1 on the scale, or beyond.
QPolygon pointer(const QSize& widget, double arrowHeight, double start, double end,
                 double normalised);

} // namespace norvo::valuebar
