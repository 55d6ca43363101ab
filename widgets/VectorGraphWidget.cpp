#include "widgets/VectorGraphWidget.h"

#include "devices/OutputVector.h"

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
    m_minValue = getParam("widget/minValue");
    m_maxValue = getParam("widget/maxValue");

    m_frame.build(getLayout(), getParam("name"), {true, plot::kReplotHint});
    m_frame.plot()->xAxis->setRange(0, 10);
    m_frame.plot()->yAxis->setRange(m_minValue, m_maxValue);
    addCurve();
    m_frame.plot()->refresh(plot::kReplotHint);
    setInitialised(true);
}

void VectorGraphWidget::changeEvent(QEvent* event)
{
    BaseWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_frame.recolour();
    }
}

void VectorGraphWidget::addCurve()
{
    QColor colour = m_frame.plot()->palette().color(QPalette::Current, QPalette::Highlight);
    QPen pen(colour);
    pen.setCosmetic(true);

    m_graph = m_frame.plot()->addGraph();
    m_graph->setPen(pen);
    if (getParam("widget/fillArea")) {
        colour.setAlphaF(0.5);
        m_graph->setBrush(QBrush(colour));
    }
}

void VectorGraphWidget::input(DoubleVec values)
{
    if (!isInitialised()) {
        return;
    }
    QVector<double> keys(values.size());
    std::iota(keys.begin(), keys.end(), 1.0);

    m_frame.plot()->xAxis->setRange(1, values.size());
    m_frame.plot()->yAxis->setRange(m_minValue, m_maxValue);
    plot::setSortedData(m_graph, keys, values);
    m_frame.plot()->refresh(plot::kReplotHint);
}
