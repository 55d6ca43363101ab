// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LumenoGeometry.h"

#include "widgets/GaugePainting.h"

#include <algorithm>
#include <cmath>

namespace norvo::lumeno {

namespace {

constexpr double kDashLeft = -0.45;
constexpr double kShortDashRight = 0.3;
constexpr double kLongDashRight = 0.5;
constexpr double kNearADigit = 0.01;

/// The positions min, min + step, ... up to max.
QVector<double> positions(const Scale& scale, double step)
{
    const double range = scale.max - scale.min;
    if (!(step > 0.0) || !(range > 0.0) || !std::isfinite(range)) {
        return {};
    }
    const double walkedStep = std::max(step, range / kMaxMarks);
    QVector<double> values;
    // Counted as well: a step too small for the value would be walked for ever.
    for (double value = scale.min; value <= scale.max && values.size() <= kMaxMarks;
         value += walkedStep) {
        values.append(value);
    }
    return values;
}

bool isNearADigit(double value, const Scale& scale)
{
    const double steps = (value - scale.min) / scale.digitsStep;
    return std::abs(std::floor(steps + 0.5) - steps) <= kNearADigit;
}

QLine dashAt(double y, int scaledBarWidth, double right)
{
    return {toPixel(kDashLeft * scaledBarWidth), toPixel(y), toPixel(right * scaledBarWidth),
            toPixel(y)};
}

} // namespace

int scaledBarWidth(int barWidth)
{
    return toPixel(barWidth * 1.5);
}

double usedHeight(int widgetHeight, bool hasCaption)
{
    return hasCaption ? widgetHeight : widgetHeight * 1.15;
}

ValueAxis valueAxis(const Scale& scale, double height, int textHeight)
{
    const double margin = 2.25 * textHeight;
    return {height - margin, scale.min, scale.max - scale.min, height - 2.0 * margin};
}

QVector<Digit> digits(const Scale& scale, const ValueAxis& axis)
{
    QVector<Digit> result;
    MarksPerPixel lines(kMaxLinesPerPixel);
    const QVector<double> values = positions(scale, scale.digitsStep);
    for (const double value : values) {
        const double y = axis.y(value);
        if (lines.admit(toPixel(y))) {
            result.append({value, y});
        }
    }
    return result;
}

QVector<QLine> shortDashes(const Scale& scale, const ValueAxis& axis, int barWidth)
{
    QVector<QLine> lines;
    MarksPerPixel marks(kMaxLinesPerPixel);
    const QVector<double> values = positions(scale, scale.dashesStep);
    for (const double value : values) {
        if (!isNearADigit(value, scale) && marks.admit(toPixel(axis.y(value)))) {
            lines.append(dashAt(axis.y(value), barWidth, kShortDashRight));
        }
    }
    return lines;
}

QLine longDash(double y, int scaledBarWidth)
{
    return dashAt(y, scaledBarWidth, kLongDashRight);
}

QRectF digitBox(double y, int scaledBarWidth, int textWidth, int textHeight)
{
    return {3.0 + 0.5 * scaledBarWidth, y - 1.0 - 0.5 * textHeight, double(textWidth),
            double(textHeight)};
}

QStringList captionLines(const QString& name)
{
    return name.split("\\n", Qt::SkipEmptyParts);
}

QRectF captionBox(int i, int count, double height, int textWidth, int textHeight)
{
    return {-0.5 * textWidth, height - (count - i) * textHeight, double(textWidth),
            double(textHeight)};
}

QRectF bar(double value, const ValueAxis& axis, int barWidth, int valueTextHeight)
{
    const double top = qMax(axis.y(value), double(valueTextHeight));
    if (std::isnan(axis.y(value))) {
        return {};
    }
    return {-0.5 * scaledBarWidth(barWidth), axis.base, double(barWidth),
            qMin(top, 1e6) - axis.base};
}

QPointF valuePosition(int textWidth)
{
    return {-1.0 - 0.5 * textWidth, 0.0};
}

QPointF unitsPosition(int valueWidth, int valueHeight, int textHeight)
{
    return {0.5 * valueWidth + 1.0, 0.93 * valueHeight - textHeight};
}

} // namespace norvo::lumeno
