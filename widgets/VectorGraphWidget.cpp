// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/VectorGraphWidget.h"

#include "devices/OutputVector.h"
#include "widgets/Looks.h"
#include "widgets/PlotCurve.h"

#include <numeric>

namespace plot = norvo::plot;

void VectorGraphWidget::initialise()
{
    // By its name: the device's class is in another library.
    const QObject* const vector = device();
    if (vector && vector->inherits("OutputVector")) {
        connect(vector, SIGNAL(output(DoubleVec)), this, SLOT(input(DoubleVec)));
    }
    m_minValue = getParam(OutputVector::kMinValue);
    m_maxValue = getParam(OutputVector::kMaxValue);

    build(getParam(OutputVector::kName), {true, plot::kReplotHint});
    view()->xAxis->setRange(0, 10);
    view()->yAxis->setRange(m_minValue, m_maxValue);
    addCurve();
    view()->refresh(plot::kReplotHint);
    setInitialised(true);
}

void VectorGraphWidget::addCurve()
{
    QColor colour = view()->palette().color(QPalette::Current, QPalette::Highlight);
    m_graph = PlotCurve::addTo(view());
    m_graph->setPen(norvo::Looks::curveLine(colour));
    if (getParam(OutputVector::kFillArea)) {
        colour.setAlphaF(0.5);
        m_graph->setBrush(QBrush(colour));
    }
}

void VectorGraphWidget::input(DoubleVec values)
{
    if (!isInitialised() || !m_graph) {
        return;
    }
    QVector<double> keys(values.size());
    std::iota(keys.begin(), keys.end(), 1.0);

    view()->xAxis->setRange(1, values.size());
    view()->yAxis->setRange(m_minValue, m_maxValue);
    plot::setSortedData(m_graph, keys, values);
    view()->refresh(plot::kReplotHint);
}
