// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/VectorGraphWidget.h"

#include "devices/OutputVector.h"
#include "widgets/Looks.h"
#include "widgets/PlotCurve.h"

#include <numeric>

namespace plot = norvo::plot;

VectorGraphWidget::VectorGraphWidget(BaseGuiDevice* device, QWidget* parent)
    : BaseWidget(device, parent)
{}

void VectorGraphWidget::initialise()
{
    if (auto* vector = qobject_cast<OutputVector*>(device())) {
        connect(vector, SIGNAL(output(DoubleVec)), this, SLOT(input(DoubleVec)));
    }
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_minValue = getParam(OutputVector::kMinValue);
    m_maxValue = getParam(OutputVector::kMaxValue);

    m_frame.build(getLayout(), getParam(OutputVector::kName), {true, plot::kReplotHint});
    m_frame.plot()->xAxis->setRange(0, 10);
    m_frame.plot()->yAxis->setRange(m_minValue, m_maxValue);
    addCurve();
    m_frame.plot()->refresh(plot::kReplotHint);
    setInitialised(true);
}

void VectorGraphWidget::changeEvent(QEvent* event)
{
    BaseWidget::changeEvent(event);
    m_frame.changeEvent(*this, *event);
}

void VectorGraphWidget::addCurve()
{
    QColor colour = m_frame.plot()->palette().color(QPalette::Current, QPalette::Highlight);
    m_graph = PlotCurve::addTo(m_frame.plot());
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

    m_frame.plot()->xAxis->setRange(1, values.size());
    m_frame.plot()->yAxis->setRange(m_minValue, m_maxValue);
    plot::setSortedData(m_graph, keys, values);
    m_frame.plot()->refresh(plot::kReplotHint);
}
