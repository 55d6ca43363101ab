// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPaintEngine>
#include <QPainter>

namespace norvo::plot {

/// The painter's coordinates are the device's pixels as long as this lives.
class DevicePixels
{
public:
    explicit DevicePixels(QPainter& painter) : m_painter(painter)
    {
        const QTransform& toDevice = painter.deviceTransform();
        painter.save();
        painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    }
    ~DevicePixels() { m_painter.restore(); }
    Q_DISABLE_COPY(DevicePixels)

    /// Whether what is drawn are smoothed pixels that are not turned.
    static bool canBeDrawnBy(const QPainter& painter)
    {
        return painter.deviceTransform().type() <= QTransform::TxScale &&
               painter.paintEngine()->type() == QPaintEngine::Raster &&
               painter.testRenderHint(QPainter::Antialiasing);
    }

    static QRect clipOf(const QPainter& painter)
    {
        return painter.deviceTransform().mapRect(painter.clipBoundingRect()).toAlignedRect();
    }

private:
    QPainter& m_painter;
};

} // namespace norvo::plot
