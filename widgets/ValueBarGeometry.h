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
/// The scale's region at the bottom of the panel; `scaleHeight` is its share of the panel.
QRect scaleRegion(const QSize& widget, double scaleHeight);
/// The pointer onto a scale from `start` to `end`, pointing down; `arrowHeight` is its share of
/// the panel's height and `normalised` the position from 0 to 1 on the scale, or beyond.
QPolygon pointer(const QSize& widget, double arrowHeight, double start, double end,
                 double normalised);

} // namespace norvo::valuebar
