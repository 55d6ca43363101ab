// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/TouchSize.h"

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

} // namespace norvo
