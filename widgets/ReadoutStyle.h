#pragma once

#include "widgets/Looks.h"

#include <QString>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <limits>

/// What the digital readouts have in common: how they blink and how wide their digits get.
namespace ReadoutStyle {

/// The next phase of a caption that blinks; `timer`, whose object name holds the phase, ticks it.
inline void blink(QObject& timer, QWidget* caption)
{
    const bool wasDark = timer.objectName() == QLatin1String("1");
    timer.setObjectName(wasDark ? "0" : "1");
    norvo::Looks::apply(caption, wasDark ? norvo::Looks::kCaptionRed : norvo::Looks::kCaptionDark);
}

/// The larger magnitude of the two, rounded; the largest int at most, 0 for what is no number.
inline int roundedMagnitude(double one, double other)
{
    const double magnitude = std::fmax(std::fabs(one), std::fabs(other));
    if (std::isnan(magnitude)) {
        return 0;
    }
    constexpr int highest = std::numeric_limits<int>::max();
    return magnitude < highest ? qRound(magnitude) : highest;
}

/// A text as wide as the numbers up to `magnitude` get: a "3" for each digit, and always a point.
inline QString widthSample(int magnitude, int precision)
{
    return QString(QString::number(magnitude).size(), '3') + '.' +
           QString(std::max(0, precision), '3');
}

} // namespace ReadoutStyle
