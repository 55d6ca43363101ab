// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DenseLine.h"

#include "widgets/LineParts.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace norvo::plot {

namespace {

using Points = QVector<QPointF>;
using Point = Points::const_iterator;

bool isPoint(const QPointF& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool isLeftOf(const QPointF& a, const QPointF& b)
{
    return a.x() < b.x();
}

/// In pixels of the device, from left to right.
Points onDevice(const QPainter& painter, const Points& line)
{
    constexpr double far = 1e7; // Heights beyond cannot be told apart, but would overflow in sums.
    const QTransform& toDevice = painter.deviceTransform();
    Points points(line.size());
    std::transform(line.cbegin(), line.cend(), points.begin(), [&](const QPointF& point) {
        const double height = point.y() * toDevice.m22() + toDevice.dy();
        return QPointF(point.x() * toDevice.m11() + toDevice.dx(),
                       std::isfinite(height) ? qBound(-far, height, far) : height);
    });
    if (!points.isEmpty() && points.last().x() < points.first().x()) {
        std::reverse(points.begin(), points.end());
    }
    return points;
}

/// Calls `draw` for each stretch of points without gaps.
template <class Draw>
void forEachRun(const Points& line, Draw draw)
{
    for (Point begin = std::find_if(line.cbegin(), line.cend(), isPoint); begin != line.cend();) {
        const Point end = std::find_if_not(begin, line.cend(), isPoint);
        draw(begin, end);
        begin = std::find_if(end, line.cend(), isPoint);
    }
}

// --- The area -----------------------------------------------------------------------------------

class AreaColumns
{
public:
    AreaColumns(PixelCoverage& coverage, const QRect& clip, double height)
        : m_coverage(coverage), m_clip(clip), m_height(height)
    {}

    void draw(Point begin, Point end)
    {
        for (Point point = begin; point + 1 < end; ++point) {
            pass(*point, *(point + 1));
        }
    }

private:
    /// Column by column; split where the line crosses the height.
    void pass(const QPointF& from, const QPointF& to)
    {
        const double left = qMax(from.x(), double(m_clip.left()));
        const double right = qMin(to.x(), double(m_clip.left() + m_clip.width()));
        const double slope = (to.y() - from.y()) / (to.x() - from.x());
        const auto heightAt = [&](double x) {
            return x <= from.x() ? from.y()
                   : x >= to.x() ? to.y()
                                 : from.y() + slope * (x - from.x());
        };
        double x = left;
        double height = heightAt(left);
        while (x < right) {
            const int column = int(std::floor(x));
            const double next = qMin(right, column + 1.0);
            const double nextHeight = heightAt(next);
            addPiece(column, next - x, height, nextHeight);
            x = next;
            height = nextHeight;
        }
    }

    void addPiece(int column, double width, double from, double to)
    {
        if ((from < m_height) != (to < m_height) && from != to) {
            const double part = (m_height - from) / (to - from);
            addBetween(column, width * part, from, m_height);
            addBetween(column, width * (1 - part), m_height, to);
        } else {
            addBetween(column, width, from, to);
        }
    }

    void addBetween(int column, double width, double from, double to)
    {
        const double sign = qMin(from, to) < m_height ? 1 : -1;
        m_coverage.addBelow(column, sign * width, from, to);
        if (m_height < m_clip.top() + m_clip.height()) {
            m_coverage.addBelow(column, -sign * width, m_height, m_height);
        } else {
            m_coverage.reachBottom();
        }
    }

    PixelCoverage& m_coverage;
    const QRect m_clip;
    const double m_height;
};

} // namespace

bool drawDenseLine(QPainter& painter, const QVector<QPointF>& line)
{
    if (!LineParts::canDrawWith(painter)) {
        return false;
    }
    const Points points = onDevice(painter, line);
    if (!std::is_sorted(points.cbegin(), points.cend(), isLeftOf)) {
        return false;
    }
    LineParts parts(painter);
    forEachRun(points, [&](Point begin, Point end) {
        const auto inParts = [&](const QPointF& point) {
            return QPointF(parts.placeOf(point.x()), point.y());
        };
        for (Point point = begin; point + 1 < end; ++point) {
            parts.pass(inParts(*point), inParts(*(point + 1)));
        }
        parts.draw();
    });
    return true;
}

bool drawDenseArea(QPainter& painter, const QVector<QPointF>& line, double height)
{
    const QRect clip = DevicePixels::clipOf(painter);
    if (!DevicePixels::canBeDrawnBy(painter) || clip.isEmpty() ||
        painter.brush().style() != Qt::SolidPattern) {
        return false;
    }
    const Points points = onDevice(painter, line);
    if (!std::is_sorted(points.cbegin(), points.cend(), isLeftOf)) {
        return false;
    }
    const double base = onDevice(painter, {QPointF(0, height)}).first().y();
    const DevicePixels pixels(painter);
    PixelCoverage coverage(painter, clip, painter.brush().color());
    AreaColumns columns(coverage, clip, base);
    forEachRun(points, [&](Point begin, Point end) { columns.draw(begin, end); });
    return true;
}

} // namespace norvo::plot
