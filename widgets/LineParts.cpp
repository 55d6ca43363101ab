// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LineParts.h"

#include <cmath>

namespace norvo::plot {

namespace {

/// In pixels of the device.
double penWidth(const QPainter& painter)
{
    const QPen& pen = painter.pen();
    const double scale = pen.isCosmetic() ? 1 : std::abs(painter.deviceTransform().m11());
    return qMax(1.0, pen.widthF() * scale);
}

} // namespace

bool LineParts::canDrawWith(const QPainter& painter)
{
    constexpr double widest = 4;
    return DevicePixels::canBeDrawnBy(painter) && !DevicePixels::clipOf(painter).isEmpty() &&
           painter.pen().style() == Qt::SolidLine && penWidth(painter) <= widest;
}

QPen LineParts::penOnDevice(const QPainter& painter)
{
    QPen pen = painter.pen();
    pen.setWidthF(penWidth(painter));
    pen.setCosmetic(true);
    return pen;
}

LineParts::LineParts(QPainter& painter)
    : m_width(penWidth(painter)),
      m_left(DevicePixels::clipOf(painter).left()),
      m_pixels(painter),
      m_coverage(painter, DevicePixels::clipOf(painter), painter.pen().color()),
      m_reach(int(std::lround(m_width * kParts / 2))),
      m_heights(DevicePixels::clipOf(painter).width() * kParts + 2 * m_reach),
      m_first(m_heights.size())
{}

void LineParts::pass(const QPointF& from, const QPointF& to)
{
    if (to.x() < 0 || from.x() >= m_heights.size()) {
        return;
    }
    const int first = int(qMax(from.x(), 0.0));
    const int last = int(qMin(to.x(), m_heights.size() - 1.0));
    m_first = qMin(m_first, first);
    m_last = qMax(m_last, last);
    const double slope = (to.y() - from.y()) / (to.x() - from.x());
    double height = first > from.x() ? from.y() + slope * (first - from.x()) : from.y();
    for (int part = first; part <= last; ++part) {
        m_heights[part].add(height);
        height = part + 1 < to.x() ? from.y() + slope * (part + 1 - from.x()) : to.y();
        m_heights[part].add(height);
    }
}

void LineParts::draw()
{
    for (int part = m_first + 1 - m_reach; part <= m_last + m_reach; ++part) {
        drawAround(part);
    }
    for (int part = m_first; part <= m_last; ++part) {
        m_heights[part] = {};
    }
    m_first = m_heights.size();
    m_last = -1;
}

/// Draws what the pen covers in the middle between a part and the one before, and half of each of
/// them. A steep line is as wide as the pen, a gentle one as high.
void LineParts::drawAround(int part)
{
    Heights heights;
    const int last = qMin(m_last, part + m_reach - 1);
    for (int i = qMax(m_first, part - m_reach); i <= last; ++i) {
        heights.add(m_heights.at(i));
    }
    if (heights.top > heights.bottom) {
        return;
    }
    const double more = qMax(0.0, m_width - (heights.bottom - heights.top)) / 2;
    const int inClip = part - m_reach;
    const int column = m_left + inClip / kParts;
    const bool isBetweenColumns = inClip % kParts == 0;
    const double width = (isBetweenColumns ? 0.5 : 1.0) / kParts;
    if (isBetweenColumns && inClip > 0) {
        m_coverage.addBar(column - 1, heights.top - more, heights.bottom + more, width);
    }
    if (inClip >= 0) { // After the one before, whose strip may now be painted.
        m_coverage.addBar(column, heights.top - more, heights.bottom + more, width);
    }
}

} // namespace norvo::plot
