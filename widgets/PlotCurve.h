// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/PlotInterface.h"

/// A graph whose area takes hardly more time than its line, however its points jump up and down.
class PlotCurve : public norvo::plot::Graph
{
public:
    /// A curve without name on the default axes, entered into the legend. Owned by the plot.
    static PlotCurve* addTo(QCustomPlot* plot);

protected:
    void drawFill(QCPPainter* painter, QVector<QPointF>* lines) const override;

private:
    using norvo::plot::Graph::Graph;
};
