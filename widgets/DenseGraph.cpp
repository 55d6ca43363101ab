// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DenseGraph.h"

#include "widgets/DenseLine.h"
#include "widgets/LineParts.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace norvo::plot {

namespace {

constexpr int kParts = LineParts::kParts; // Of a pixel's width, in which points are as one.
constexpr int kDense = 8;                 // Points of a pixel from which on that is done.

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSame(const QCPGraphData& a, const QCPGraphData& b)
{
    return isSame(a.key, b.key) && isSame(a.value, b.value);
}

bool isLower(const QCPGraphData& a, const QCPGraphData& b)
{
    return a.value < b.value;
}

bool isGap(const QCPGraphData& point)
{
    return !std::isfinite(point.value);
}

/// Whether a line covers many pixels in each of some columns, mostly more than once.
bool isDense(const QVector<QPointF>& line, double columns)
{
    constexpr double tall = 60;
    if (line.size() >= 2 * columns) {
        return true;
    }
    double height = 0;
    for (int i = 1; i < line.size() && height < tall * columns; ++i) {
        const double step = std::abs(line[i].y() - line[i - 1].y());
        height += step < std::numeric_limits<double>::infinity() ? step : 0;
    }
    return line.size() >= columns && height >= tall * columns;
}

} // namespace

void DenseGraph::append(double key, double value)
{
    const bool wereTrue = areBlocksTrue();
    const bool isLast = mDataContainer->isEmpty() || !(key < (mDataContainer->constEnd() - 1)->key);
    addData(key, value);
    if (wereTrue && isLast) {
        m_blocks.pointAdded(mDataContainer->constBegin());
        m_known = mark();
    }
}

void DenseGraph::dropBefore(double key)
{
    const bool wereTrue = areBlocksTrue();
    const int before = mDataContainer->size();
    mDataContainer->removeBefore(key);
    if (wereTrue) {
        m_blocks.pointsDropped(before - mDataContainer->size());
        m_known = mark();
    }
}

void DenseGraph::replace(const QVector<double>& keys, const QVector<double>& values)
{
    setData(keys, values, true);
    m_known = {};
}

QCPRange DenseGraph::getValueRange(bool& found, QCP::SignDomain domain, const QCPRange& keys) const
{
    if (domain != QCP::sdBoth || keys != QCPRange()) {
        return QCPGraph::getValueRange(found, domain, keys);
    }
    const Stretch all = blocks().all(mDataContainer->constBegin());
    found = all.least <= all.greatest;
    return found ? QCPRange(all.least, all.greatest) : QCPRange();
}

void DenseGraph::draw(QCPPainter* painter)
{
    if (std::exchange(m_isDrawn, false)) {
        return;
    }
    const QTransform toPixels = painter->deviceTransform();
    m_scale = toPixels.type() <= QTransform::TxScale ? std::abs(toPixels.m11()) : 1;
    if (!drawStretches(*painter)) {
        m_picture.reset();
        QCPGraph::draw(painter);
    }
}

/// A plain line of very many points, from what its stretches lie between to the pixels, and with it
/// all that come right after it and are such, too.
bool DenseGraph::drawStretches(QCPPainter& painter)
{
    if (!isOfStretches(painter)) {
        return false;
    }
    std::vector<CurvesPicture::Curve> curves;
    const QList<QCPLayerable*> all = layer()->children();
    for (int i = all.indexOf(this); i < all.size(); ++i) {
        auto* const graph = dynamic_cast<DenseGraph*>(all[i]);
        if (!all[i]->realVisibility()) {
            continue;
        }
        if (!graph || graph->keyAxis() != keyAxis() || graph->valueAxis() != valueAxis() ||
            !graph->isOfStretches(painter)) {
            break;
        }
        curves.push_back({graph->m_kept, graph->data()->constBegin(), graph->m_blocks,
                          LineParts::penOnDevice(painter)});
        if (graph != this) {
            graph->m_isDrawn = true;
            graph->m_picture.reset();
        }
    }
    if (!m_picture) {
        m_picture = std::make_unique<CurvesPicture>();
    }
    m_picture->draw(painter, axesIn(DevicePixels::clipOf(painter), painter.deviceTransform()),
                    curves);
    return true;
}

bool DenseGraph::isOfStretches(QCPPainter& painter) const
{
    constexpr double farthest = 1e14; // Pixels from the key 0 that can still be told apart.
    if (!isPlainLine() || painter.modes().testFlag(QCPPainter::pmVectorized)) {
        return false;
    }
    const double scale = std::abs(painter.deviceTransform().m11());
    const double pixel = keyAxis()->range().size() / (keyAxis()->axisRect()->width() * scale);
    Point begin;
    Point end;
    getVisibleDataBounds(begin, end, QCPDataRange(0, mDataContainer->size()));
    if (begin == end || std::abs(keyAxis()->range().lower) > farthest * pixel ||
        !isCrowded(begin, end, pixel) || !isMostlySeen(keyAxis()->range().size()) ||
        blocks().all(mDataContainer->constBegin()).hasGaps) {
        return false;
    }
    painter.setPen(pen());
    applyDefaultAntialiasingHint(&painter);
    return LineParts::canDrawWith(painter);
}

CurvesPicture::Axes DenseGraph::axesIn(const QRect& clip, const QTransform& toDevice) const
{
    const QCPRange keys = keyAxis()->range();
    const QCPRange values = valueAxis()->range();
    const double pixel = keys.size() / (keyAxis()->axisRect()->width() * toDevice.m11());
    const double left = keyAxis()->coordToPixel(keys.lower) * toDevice.m11() + toDevice.dx();
    const auto heightOf = [&](double value) {
        return valueAxis()->coordToPixel(value) * toDevice.m22() + toDevice.dy() - clip.top();
    };
    const double height = heightOf(values.lower);
    return {keys.lower + (clip.left() - left) * pixel, pixel, values.lower, height,
            (heightOf(values.upper) - height) / values.size()};
}

/// Nothing but a line on an upright pair of axes that grow evenly.
bool DenseGraph::isPlainLine() const
{
    const QCPAxis& keys = *keyAxis();
    const QCPAxis& values = *valueAxis();
    return adaptiveSampling() && lineStyle() == lsLine && brush().style() == Qt::NoBrush &&
           scatterStyle().isNone() && !selected() && pen().color().alpha() != 0 &&
           keys.orientation() == Qt::Horizontal && keys.scaleType() == QCPAxis::stLinear &&
           values.scaleType() == QCPAxis::stLinear && !keys.rangeReversed();
}

bool DenseGraph::isCrowded(const Point& begin, const Point& end, double pixel) const
{
    const double columns = keyAxis()->range().size() / pixel;
    const double ofThem = ((end - 1)->key - begin->key) / pixel;
    return double(end - begin) >= columns && double(end - begin) > kDense * ofThem;
}

bool DenseGraph::isMostlySeen(double size) const
{
    const Point first = mDataContainer->constBegin();
    const Point last = mDataContainer->constEnd() - 1;
    return last->key - first->key <= 2 * size;
}

void DenseGraph::getOptimizedLineData(QVector<QCPGraphData>* line, const Point& begin,
                                      const Point& end) const
{
    const QCPAxis& axis = *keyAxis();
    const double columns = axis.axisRect()->width() * m_scale;
    if (begin == end || double(end - begin) < columns || !adaptiveSampling() ||
        axis.orientation() != Qt::Horizontal || axis.scaleType() != QCPAxis::stLinear) {
        QCPGraph::getOptimizedLineData(line, begin, end); // Which puts a few on whole pixels.
        return;
    }
    const double pixel = axis.range().size() / columns; // in keys
    if (!isCrowded(begin, end, pixel)) {
        line->resize(int(end - begin));
        std::copy(begin, end, line->begin());
        return;
    }
    blocks();
    const Point points = mDataContainer->constBegin();
    addStretches(line, int(begin - points), int(end - points), pixel / kParts);
}

void DenseGraph::drawLinePlot(QCPPainter* painter, const QVector<QPointF>& lines) const
{
    applyDefaultAntialiasingHint(painter);
    if (painter->modes().testFlag(QCPPainter::pmVectorized) ||
        !isDense(lines, painter->clipBoundingRect().width() * m_scale) ||
        !drawDenseLine(*painter, lines)) {
        QCPGraph::drawLinePlot(painter, lines);
    }
}

DenseGraph::Mark DenseGraph::mark() const
{
    const QCPGraphDataContainer& points = *mDataContainer;
    if (points.isEmpty()) {
        return {};
    }
    return {points.constBegin(), points.size(), *points.constBegin(), *(points.constEnd() - 1)};
}

bool DenseGraph::areBlocksTrue() const
{
    const Mark now = mark();
    return now.begin == m_known.begin && now.count == m_known.count &&
           now.count == m_blocks.count() && isSame(now.first, m_known.first) &&
           isSame(now.last, m_known.last);
}

const PointBlocks& DenseGraph::blocks() const
{
    if (!areBlocksTrue()) {
        m_blocks.clear();
        m_kept.clear();
        for (int i = 0; i < mDataContainer->size(); ++i) {
            m_blocks.pointAdded(mDataContainer->constBegin());
        }
        m_known = mark();
    }
    return m_blocks;
}

/// What the points lie between, for each part of the axis of a width in keys.
void DenseGraph::addStretches(QVector<QCPGraphData>* line, int begin, int end, double width) const
{
    constexpr double finest = 0.25; // Of a part: so far a block may reach into the next one.
    const Point points = mDataContainer->constBegin();
    const double origin = keyAxis()->range().lower;
    const double parts = ((points + (end - 1))->key - (points + begin)->key) / width + 2;
    line->reserve(2 * int(qMin(parts, double(end - begin))));
    for (int next = begin; next < end;) {
        const Point first = points + next;
        const double part = std::floor((first->key - origin) / width);
        const double limit = origin + (part + 1) * width;
        const Stretch stretch =
            m_blocks.stretchAt(points, next, end, limit, limit + finest * width);
        if (!line->isEmpty() && first->key - line->last().key > 2 * width) {
            line->append(*(first - 1)); // Across a pause the line goes from point to point.
            line->append(*first);
        }
        if (stretch.hasGaps) {
            addRuns(line, first, first + stretch.count);
        } else {
            addStretch(line, stretch);
        }
        next += stretch.count;
    }
}

/// Both ends of a stretch, the one nearer to where the line is at first. It slants, so that as the
/// edge of an area it shows how many of the values are how high.
void DenseGraph::addStretch(QVector<QCPGraphData>* line, const Stretch& stretch) const
{
    const double before = line->isEmpty() ? qQNaN() : line->last().value;
    const bool isDown = std::abs(before - stretch.greatest) < std::abs(before - stretch.least);
    line->append({stretch.firstKey, isDown ? stretch.greatest : stretch.least});
    line->append({stretch.lastKey, isDown ? stretch.least : stretch.greatest});
}

/// The points between gaps, one run after the other.
void DenseGraph::addRuns(QVector<QCPGraphData>* line, const Point& from, const Point& to) const
{
    for (Point begin = from; begin != to;) {
        const Point end = std::find_if(begin, to, isGap);
        if (begin != end) {
            const auto [least, greatest] = std::minmax_element(begin, end, isLower);
            addStretch(line, {int(end - begin), false, begin->key, (end - 1)->key, least->value,
                              greatest->value});
        }
        begin = std::find_if_not(end, to, isGap);
        if (begin != end) {
            line->append({end->key, qQNaN()});
        }
    }
}

} // namespace norvo::plot
