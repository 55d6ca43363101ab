#include "widgets/SliderWidget.h"

#include "devices/SliderDevice.h"
#include "norvo/Truncation.h"

#include <QGridLayout>
#include <QSlider>

void SliderWidget::initialise()
{
    m_slider = new QSlider;
    m_slider->setRange(getParam(SliderDevice::kMinValue), getParam(SliderDevice::kMaxValue));
    m_slider->setSingleStep(getParam(SliderDevice::kStep));
    if (getParam(SliderDevice::kOrientation).value() == QLatin1String("horizontal")) {
        m_slider->setOrientation(Qt::Horizontal);
    }
    m_slider->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) { emit wgOutput(value); });
    getLayout()->addWidget(m_slider);
    setFocusProxy(m_slider);
    if (auto* const sliderDevice = qobject_cast<SliderDevice*>(device())) {
        connect(this, SIGNAL(wgOutput(double)), sliderDevice, SLOT(wgInput(double)));
        connect(sliderDevice, SIGNAL(wgOutput(double)), this, SLOT(wgInput(double)));
    }
    setInitialised(true);
}

void SliderWidget::wgInput(double value)
{
    if (m_slider) {
        m_slider->setValue(norvo::truncatedToInt(value));
    }
}

QSize SliderWidget::sizeHint() const
{
    return m_slider ? m_slider->sizeHint() : QSize();
}
