// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ValueBarGeometry.h"

#include "widgets/GaugePainting.h"

#include <cmath>

namespace norvo::valuebar {

QRect panel(const QSize& widget)
{
    return {kMargin, kMargin, widget.width() - 2 * kMargin, widget.height() - 2 * kMargin};
}

QRect panelRowsBetweenCorners(const QSize& widget)
{
    return panel(widget).adjusted(0, kCornerRadius, 0, -kCornerRadius);
}

QRect panelColumnsBetweenCorners(const QSize& widget)
{
    return panel(widget).adjusted(kCornerRadius, 0, -kCornerRadius, 0);
}

QRect scaleRegion(const QSize& widget, double scaleHeight)
{
    const QRect inside = panel(widget);
    const int top = toPixel((1.0 - scaleHeight) * inside.height() + kMargin);
    return {kMargin, top, inside.width(), toPixel(scaleHeight * inside.height())};
}

QPolygon pointer(const QSize& widget, double arrowHeight, double start, double end,
                 double normalised)
{
    constexpr int halfWidth = 10;
    constexpr double centreShare = 0.3;
    const int height = panel(widget).height();
    const int half = toPixel(height * arrowHeight) / 2;
    const int y = toPixel(centreShare * height + kMargin);
    const int x = toPixel(std::abs(end - start) * normalised + start);
    return QPolygon({QPoint(x - halfWidth, y - half), QPoint(x + halfWidth, y - half),
                     QPoint(x + halfWidth, y), QPoint(x, y + half), QPoint(x - halfWidth, y)});
}

} // namespace norvo::valuebar
