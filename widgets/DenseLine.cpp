// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DenseLine.h"

#include "widgets/PixelCoverage.h"

#include <QPainter>
#include <QPaintEngine>

#include <algorithm>
#include <cmath>
#include <limits>

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

bool canDrawOn(const QPainter& painter)
{
    return painter.deviceTransform().type() <= QTransform::TxScale &&
           painter.paintEngine()->type() == QPaintEngine::Raster &&
           painter.testRenderHint(QPainter::Antialiasing);
}

QRect clipOf(const QPainter& painter)
{
    return painter.deviceTransform().mapRect(painter.clipBoundingRect()).toAlignedRect();
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

private:
    QPainter& m_painter;
};

// --- The line -----------------------------------------------------------------------------------

constexpr int kParts = 4; ///< Of a pixel's width, each with the heights that the line passes.

struct Heights
{
    double top = std::numeric_limits<double>::infinity(); ///< Below `bottom`: none.
    double bottom = -std::numeric_limits<double>::infinity();

    void add(double height)
    {
        top = qMin(top, height);
        bottom = qMax(bottom, height);
    }
    void add(const Heights& other)
    {
        top = qMin(top, other.top);
        bottom = qMax(bottom, other.bottom);
    }
};

class LineColumns
{
public:
    LineColumns(PixelCoverage& coverage, const QRect& clip, double width)
        : m_coverage(coverage),
          m_left(clip.left()),
          m_width(width),
          m_reach(int(std::lround(width * kParts / 2))),
          m_heights(clip.width() * kParts + 2 * m_reach)
    {}

    void draw(Point begin, Point end)
    {
        m_first = m_heights.size();
        m_last = -1;
        for (Point point = begin; point + 1 < end; ++point) {
            pass(inParts(*point), inParts(*(point + 1)));
        }
        for (int part = m_first + 1 - m_reach; part <= m_last + m_reach; ++part) {
            drawAround(part);
        }
        for (int part = m_first; part <= m_last; ++part) {
            m_heights[part] = {};
        }
    }

private:
    QPointF inParts(const QPointF& point) const
    {
        return {(point.x() - m_left) * kParts + m_reach, point.y()};
    }

    void pass(const QPointF& from, const QPointF& to)
    {
        if (to.x() < 0 || from.x() >= m_heights.size()) {
            return;
        }
        const int first = int(qMax(from.x(), 0.0));
        const int last = int(qMin(to.x(), m_heights.size() - 1.0));
        m_first = qMin(m_first, first);
        m_last = qMax(m_last, last);
        if (first == last) {
            m_heights[first].add(from.y());
            m_heights[first].add(to.y());
            return;
        }
        const double slope = (to.y() - from.y()) / (to.x() - from.x());
        double height = first > from.x() ? from.y() + slope * (first - from.x()) : from.y();
        for (int part = first; part <= last; ++part) {
            m_heights[part].add(height);
            height = part + 1 < to.x() ? from.y() + slope * (part + 1 - from.x()) : to.y();
            m_heights[part].add(height);
        }
    }

    /// Draws what the pen covers in the middle between a part and the one before, and half of each
    /// of them. A steep line is as wide as the pen, a gentle one as high.
    void drawAround(int part)
    {
        Heights heights;
        const int last = qMin(m_last, part + m_reach - 1);
        for (int i = qMax(m_first, part - m_reach); i <= last; ++i) {
            heights.add(m_heights[i]);
        }
        if (heights.top > heights.bottom) {
            return;
        }
        const double more = qMax(0.0, m_width - (heights.bottom - heights.top)) / 2;
        const int inClip = part - m_reach;
        const int column = m_left + inClip / kParts;
        const bool isBetweenColumns = inClip % kParts == 0;
        const double width = (isBetweenColumns ? 0.5 : 1.0) / kParts;
        if (inClip >= 0) {
            m_coverage.addBar(column, heights.top - more, heights.bottom + more, width);
        }
        if (isBetweenColumns && inClip > 0) {
            m_coverage.addBar(column - 1, heights.top - more, heights.bottom + more, width);
        }
    }

    PixelCoverage& m_coverage;
    const int m_left;
    const double m_width;
    const int m_reach; ///< Parts that the pen reaches to either side.
    QVector<Heights> m_heights;
    int m_first = 0; ///< Parts that have heights.
    int m_last = -1;
};

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
        m_coverage.addBelow(column, -sign * width, m_height, m_height);
    }

    PixelCoverage& m_coverage;
    const QRect m_clip;
    const double m_height;
};

} // namespace

bool drawDenseLine(QPainter& painter, const QVector<QPointF>& line)
{
    constexpr double widest = 4;
    const QPen pen = painter.pen();
    const double scale = pen.isCosmetic() ? 1 : std::abs(painter.deviceTransform().m11());
    const double width = qMax(1.0, pen.widthF() * scale);
    const QRect clip = clipOf(painter);
    if (!canDrawOn(painter) || clip.isEmpty() || pen.style() != Qt::SolidLine || width > widest) {
        return false;
    }
    const Points points = onDevice(painter, line);
    if (!std::is_sorted(points.cbegin(), points.cend(), isLeftOf)) {
        return false;
    }
    const DevicePixels pixels(painter);
    PixelCoverage coverage(painter, clip, pen.color());
    LineColumns columns(coverage, clip, width);
    forEachRun(points, [&](Point begin, Point end) { columns.draw(begin, end); });
    return true;
}

bool drawDenseArea(QPainter& painter, const QVector<QPointF>& line, double height)
{
    const QRect clip = clipOf(painter);
    if (!canDrawOn(painter) || clip.isEmpty() || painter.brush().style() != Qt::SolidPattern) {
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
