// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"

#include <algorithm>
#include <cmath>

namespace {

bool isLeftOf(const QPointF& a, const QPointF& b)
{
    return a.x() < b.x();
}

} // namespace

PlotCurve* PlotCurve::addTo(QCustomPlot* plot)
{
    // On its own the library asks every legend entry whether it has the curve already.
    plot->setAutoAddPlottableToLegend(false);
    auto* curve = new PlotCurve(plot->xAxis, plot->yAxis);
    norvo::plot::addPlottable(plot, curve);
    plot->setAutoAddPlottableToLegend(true);
    QCPLegend* legend = plot->legend;
    legend->addElement(legend->rowCount(), 0, new QCPPlottableLegendItem(legend, curve));
    return curve;
}

/// Qt's fill of a polygon takes time with the square of the edges that cross a row of pixels. So
/// the fill is drawn strip by strip; as strips end between pixels, the picture is the same.
void PlotCurve::drawFill(QCPPainter* painter, QVector<QPointF>* lines) const
{
    constexpr int fewPoints = 50;
    constexpr int pointsOfAStrip = 10;
    constexpr double minPixels = 4;
    const QTransform toPixels = painter->deviceTransform();
    if (brush().style() == Qt::NoBrush || lines->size() < fewPoints ||
        toPixels.type() > QTransform::TxScale ||
        !std::is_sorted(lines->cbegin(), lines->cend(), isLeftOf)) {
        QCPGraph::drawFill(painter, lines);
        return;
    }
    const QRectF clip = painter->clipBoundingRect();
    const QRectF pixels = toPixels.mapRect(clip);
    const double width =
        qMax(minPixels, std::ceil(pixels.width() * pointsOfAStrip / lines->size()));
    for (double x = std::floor(pixels.left()); x < pixels.right(); x += width) {
        const QRectF strip =
            toPixels.inverted().mapRect(QRectF(x, pixels.top(), width, pixels.height()));
        const auto after =
            std::upper_bound(lines->cbegin(), lines->cend(), strip.topRight(), isLeftOf);
        const auto first = std::lower_bound(lines->cbegin(), after, strip.topLeft(), isLeftOf);
        QVector<QPointF> part(first == lines->cbegin() ? first : first - 1,
                              after == lines->cend() ? after : after + 1);
        painter->save();
        // A clip takes in every pixel that it touches, so it stays off the pixels beside.
        const double margin = 0.25 / toPixels.m11();
        painter->setClipRect(strip.adjusted(margin, 0, -margin, 0), Qt::IntersectClip);
        QCPGraph::drawFill(painter, &part);
        painter->restore();
    }
}
