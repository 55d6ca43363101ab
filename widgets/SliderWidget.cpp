// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/SliderWidget.h"

#include "devices/SliderDevice.h"
#include "norvo/Truncation.h"

#include <QGridLayout>
#include <QSlider>

namespace {

/// A style divides by twice the range in 32 bits, which is 0 for a range of 2^31: of that one, the
/// end farther from 0 is moved inward by 1.
void setRange(QSlider& slider, int min, int max)
{
    if (qint64(max) - min == qint64(1) << 31) {
        max > -qint64(min) ? --max : ++min;
    }
    slider.setRange(min, max);
}

} // namespace

void SliderWidget::initialise()
{
    m_slider = new QSlider;
    setRange(*m_slider, getParam(SliderDevice::kMinValue), getParam(SliderDevice::kMaxValue));
    m_slider->setSingleStep(getParam(SliderDevice::kStep));
    if (getParam(SliderDevice::kOrientation).value() == SliderDevice::kHorizontal) {
        m_slider->setOrientation(Qt::Horizontal);
    }
    m_slider->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(m_slider, &QSlider::valueChanged, this, [this](int value) { emit wgOutput(value); });
    getLayout()->addWidget(m_slider);
    setFocusProxy(m_slider);
    connect(this, SIGNAL(wgOutput(double)), device(), SLOT(wgInput(double)));
    connect(device(), SIGNAL(wgOutput(double)), this, SLOT(wgInput(double)));
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
