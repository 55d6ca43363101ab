// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DoubleVec.h"
#include "widgets/GraphFrame.h"

/// Plots the last array over the index 1, 2, ..., n. The value axis stands still.
class VectorGraphWidget : public GraphFrame
{
    Q_OBJECT

public:
    using GraphFrame::GraphFrame;

    void initialise() override;

public slots:
    void input(DoubleVec data); ///< Empty: clears the curve. NaN: a gap.

private:
    void addCurve();

    double m_minValue = 0.0;
    double m_maxValue = 1.0;
    QPointer<norvo::plot::Graph> m_graph; ///< The plot's.
};
