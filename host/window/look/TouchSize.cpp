// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/TouchSize.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QScreen>
#include <QtMath>

namespace norvo {

namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kFingerMm = 12.7;
constexpr double kGloveMm = 20;
// Resolutions that a screen can have; projectors and virtual screens name sizes of all kinds.
constexpr double kMinDpi = 60;
constexpr double kMaxDpi = 480;

} // namespace

double TouchSize::pixelsPerMm(const QScreen& screen)
{
    const double physical = screen.physicalDotsPerInch();
    const bool isPossible = physical >= kMinDpi && physical <= kMaxDpi;
    return (isPossible ? physical : screen.logicalDotsPerInch()) / kMmPerInch;
}

int TouchSize::pixels(PanelLook::Touch touch, double pixelsPerMm)
{
    return qCeil((touch == PanelLook::Touch::Gloves ? kGloveMm : kFingerMm) * pixelsPerMm);
}

int TouchSize::pixels(PanelLook::Touch touch, const QScreen& screen)
{
    return pixels(touch, pixelsPerMm(screen));
}

QGraphicsView* TouchSize::scaledBy(const QWidget& widget)
{
    const QGraphicsProxyWidget* const proxy = widget.window()->graphicsProxyWidget();
    return proxy && proxy->scene() ? proxy->scene()->views().value(0) : nullptr;
}

int TouchSize::pixels(PanelLook::Touch touch, const QWidget& widget)
{
    const QGraphicsView* const scaling = scaledBy(widget);
    const double scale = scaling ? scaling->transform().m11() : 1;
    return pixels(touch, pixelsPerMm(*widget.screen()) / scale);
}

} // namespace norvo
