// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLine>
#include <QRectF>
#include <QStringList>
#include <QVector>

namespace norvo {

/// What turns a value into a height in pixels.
struct ValueAxis
{
    double base = 0.0;  ///< Height of `min`.
    double min = 0.0;   ///< Value at the base.
    double range = 0.0; ///< From `min` to the value at the other end.
    double span = 0.0;  ///< Pixels of that range, upwards: heights shrink as values grow.

    double y(double value) const { return base - (value - min) / range * span; }
};

} // namespace norvo

/// Where the parts of the scaled bar gauge lie, in pixels. Horizontally 0 is the widget's centre.
namespace norvo::lumeno {

struct Scale
{
    double min = 0.0;
    double max = 0.0;
    double digitsStep = 0.0;
    double dashesStep = 0.0;
};

struct Digit
{
    double value;
    double y;
};

/// Bar width with the room around it, cut to whole pixels.
int scaledBarWidth(int barWidth);
/// A little more than the widget where no caption needs the room.
double usedHeight(int widgetHeight, bool hasCaption);
/// Where a value lies. `textHeight` is that of the scale's font.
ValueAxis valueAxis(const Scale& scale, double height, int textHeight);

/// The numbered positions of the scale, from its start in steps that are added up; of those that
/// share a pixel no more than can be seen. None where the step is no positive number, the range is
/// infinite or its ends are equal or reversed.
QVector<Digit> digits(const Scale& scale, const ValueAxis& axis);
/// The same for the short dashes; those within 0.01 steps of a number are left out.
QVector<QLine> shortDashes(const Scale& scale, const ValueAxis& axis, int barWidth);
QLine longDash(double y, int scaledBarWidth);
QRectF digitBox(double y, int scaledBarWidth, int textWidth, int textHeight);

/// The caption's lines: the name parted at each backslash followed by "n"; empty ones are left out.
QStringList captionLines(const QString& name);
/// The box of line `i` of `count`; the last one ends at the used height.
QRectF captionBox(int i, int count, double height, int textWidth, int textHeight);

/// From the base to the value, but no higher than one line of the value's text below the top.
QRectF bar(double value, const ValueAxis& axis, int barWidth, int valueTextHeight);
QPointF valuePosition(int textWidth);                                   ///< Its top left corner.
QPointF unitsPosition(int valueWidth, int valueHeight, int textHeight); ///< Their top left corner.

} // namespace norvo::lumeno
