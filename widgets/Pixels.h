#pragma once

#include <QPainter>

#include <cmath>

/// A position in pixels cut toward zero. What lies further out than any screen is drawn at that
/// distance, and what is no number at 0, so that no drawing overflows.
inline int toPixel(double position)
{
    constexpr double furthest = 1e6;
    return std::isnan(position) ? 0 : int(qBound(-furthest, position, furthest));
}

/// How many device pixels the painter gives to each pixel of the widget; 0 where that is no whole
/// number, or the picture is turned or lies between pixels, so that a pixmap would come out
/// blurred.
inline int wholePixelScale(const QPainter& painter)
{
    constexpr double largest = 8.0;
    const QTransform& transform = painter.deviceTransform();
    const auto isWhole = [](double number) { return number == std::floor(number); };
    const double scale = transform.m11();
    const bool whole = transform.type() <= QTransform::TxScale && transform.m22() == scale &&
                       isWhole(scale) && isWhole(transform.dx()) && isWhole(transform.dy());
    return whole && scale >= 1.0 && scale <= largest ? int(scale) : 0;
}
