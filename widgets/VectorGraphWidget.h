// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"
#include "norvo/DoubleVec.h"
#include "widgets/GraphFrame.h"

/// Plots the last array over the index 1, 2, ..., n. The value axis stands still.
class VectorGraphWidget : public BaseWidget
{
    Q_OBJECT

public:
    VectorGraphWidget(BaseGuiDevice* device, QWidget* parent);

    void initialise() override;

public slots:
    void input(DoubleVec data); ///< Empty: clears the curve. NaN: a gap.

protected:
    void changeEvent(QEvent* event) override;

private:
    void addCurve();

    double m_minValue = 0.0;
    double m_maxValue = 1.0;
    GraphFrame m_frame;
    QPointer<QCPGraph> m_graph; ///< The plot's.
};
