#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QString>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <limits>

/// The looks that the digital readouts share, and what they have in common in sizing digits.
namespace ReadoutStyle {

inline const QString kInRange =
    QStringLiteral("QLabel { background-color : green; color : white; border: 1px solid #222222; "
                   "border-radius: 5px; }");
inline const QString kOutOfRange =
    QStringLiteral("QLabel { background-color : red; color : white; border: 1px solid #222222; "
                   "border-radius: 5px; }");
inline const QString kTimedOut =
    QStringLiteral("QLabel { background-color : gray; color : white; border: 1px solid #222222; "
                   "border-radius: 5px; }");

inline const QString kCaptionDark =
    QStringLiteral("QWidget { background-color: #333333; border: 1px solid #222222; "
                   "border-radius: 5px; }");
inline const QString kCaptionRed =
    QStringLiteral("QWidget { background-color: red; border: 1px solid #222222; "
                   "border-radius: 5px; }");

constexpr int kVeryLight = 3; ///< A font weight.

inline QFont digitsFont(int pointSize)
{
    return QFont("Digital-7", pointSize);
}

inline QFont captionFont(int pointSize)
{
    return QFont("Arial", pointSize, kVeryLight, false);
}

/// Sets the style sheet where it is another one: setting it costs as much as a hundred values.
inline void setLook(QWidget* widget, const QString& styleSheet)
{
    if (widget->styleSheet() != styleSheet) {
        widget->setStyleSheet(styleSheet);
    }
}

/// The next phase of a caption that blinks; `timer`, whose object name holds the phase, ticks it.
inline void blink(QObject& timer, QWidget* caption)
{
    const bool wasDark = timer.objectName() == QLatin1String("1");
    timer.setObjectName(wasDark ? "0" : "1");
    setLook(caption, wasDark ? kCaptionRed : kCaptionDark);
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
