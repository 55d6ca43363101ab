// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVector>

class QPainter;
class QPointF;

namespace norvo::plot {

/// Draws a line that goes one way, left or right, in a time that hardly depends on how often and
/// how far it goes up and down meanwhile. Smoothed, and as strong where it goes over itself as
/// elsewhere.
///
/// With the painter's pen, at least a pixel wide. NaN and infinities are gaps. False: this painter,
/// its pen or the line is none for that, and nothing was drawn.
bool drawDenseLine(QPainter& painter, const QVector<QPointF>& line);

/// The same for the area between a line and a height, with the painter's brush.
bool drawDenseArea(QPainter& painter, const QVector<QPointF>& line, double height);

} // namespace norvo::plot
