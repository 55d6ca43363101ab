// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/DevicePixels.h"
#include "widgets/PixelCoverage.h"

#include <QPen>
#include <QPointF>
#include <QVector>

#include <limits>

namespace norvo::plot {

/// A line as the heights that it passes in each part of a pixel's width, drawn with a painter's
/// pen. That takes as long as there are parts, however often the line goes up and down.
///
/// Places count in parts, heights in pixels of the device, downwards.
class LineParts
{
public:
    static constexpr int kParts = 4; ///< Of a pixel's width.

    static bool canDrawWith(const QPainter& painter); ///< Its pen, and what it draws on.
    static QPen penOnDevice(const QPainter& painter); ///< That is as wide on the device itself.
    explicit LineParts(QPainter& painter);            ///< One that can be drawn with.

    double placeOf(double x) const
    {
        return (x - m_left) * kParts + m_reach;
    }                                                  ///< x: of the device.
    void pass(const QPointF& from, const QPointF& to); ///< From left to right.
    void pass(double place, double top, double bottom) ///< All between two heights.
    {
        if (place >= 0 && place < m_heights.size()) {
            const int part = int(place);
            m_first = qMin(m_first, part);
            m_last = qMax(m_last, part);
            m_heights[part].add(top);
            m_heights[part].add(bottom);
        }
    }
    void draw(); ///< What it has passed so far. What it passes then is another line.

private:
    struct Heights
    {
        double top = std::numeric_limits<double>::infinity(); ///< Below `bottom`: none.
        double bottom = -std::numeric_limits<double>::infinity();

        void add(double height)
        {
            top = height < top ? height : top;
            bottom = height > bottom ? height : bottom;
        }
        void add(const Heights& other)
        {
            top = other.top < top ? other.top : top;
            bottom = other.bottom > bottom ? other.bottom : bottom;
        }
    };

    void drawAround(int part);

    const double m_width; ///< Of the pen, in pixels.
    const int m_left;
    const DevicePixels m_pixels;
    PixelCoverage m_coverage;
    const int m_reach; ///< Parts that the pen reaches to either side.
    QVector<Heights> m_heights;
    int m_first; ///< Parts that have heights.
    int m_last = -1;
};

} // namespace norvo::plot
