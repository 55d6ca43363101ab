// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"

#include "widgets/DenseLine.h"

PlotCurve* PlotCurve::addTo(QCustomPlot* plot)
{
    const norvo::plot::ListsSetAside lists(*plot);
    // On its own the library asks every legend entry whether it has the curve already.
    plot->setAutoAddPlottableToLegend(false);
    auto* curve = new PlotCurve(plot->xAxis, plot->yAxis);
    norvo::plot::addPlottable(plot, curve);
    plot->setAutoAddPlottableToLegend(true);
    QCPLegend* legend = plot->legend;
    legend->addElement(legend->rowCount(), 0, new norvo::plot::LegendItem(legend, curve));
    return curve;
}

/// Qt's fill of a polygon takes time with the square of the edges that cross a row of pixels.
void PlotCurve::drawFill(QCPPainter* painter, QVector<QPointF>* lines) const
{
    constexpr int fewPoints = 50;
    const bool isUpright =
        keyAxis()->orientation() == Qt::Horizontal && valueAxis()->scaleType() == QCPAxis::stLinear;
    applyFillAntialiasingHint(painter);
    if (!isUpright || channelFillGraph() || lines->size() < fewPoints ||
        !norvo::plot::drawDenseArea(*painter, *lines, valueAxis()->coordToPixel(0))) {
        QCPGraph::drawFill(painter, lines);
    }
}
