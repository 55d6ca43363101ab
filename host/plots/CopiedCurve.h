// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/PlotCalls.h"

namespace norvo {

/// A curve in the copy of a plot. Its fill takes time in proportion to its points.
class CopiedCurve : public QCPGraph
{
public:
    using QCPGraph::QCPGraph;

protected:
    void drawFill(QCPPainter* painter, QVector<QPointF>* lines) const override;
};

} // namespace norvo
