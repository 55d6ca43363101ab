// SPDX-License-Identifier: GPL-3.0-or-later

// Which widget shows which device. Devices know no widget; only this page knows both.

#include "devices/ButtonDevice.h"
#include "devices/CheckBoxDevice.h"
#include "devices/DropDownListDevice.h"
#include "devices/IndicatorDevice.h"
#include "devices/InputDevice.h"
#include "devices/Label.h"
#include "devices/LumenoBarDevice.h"
#include "devices/MultilineDevice.h"
#include "devices/OutputBarDevice.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/OutputGraphDevice.h"
#include "devices/OutputVector.h"
#include "devices/OutputWithProgress.h"
#include "devices/PictureDevice.h"
#include "devices/QmlGuiDevice.h"
#include "devices/QmlParts.h"
#include "devices/SliderDevice.h"
#include "widgets/ButtonWidget.h"
#include "widgets/CheckBoxWidget.h"
#include "widgets/DigitalWidget.h"
#include "widgets/DigitalWithProgress.h"
#include "widgets/DropDownListWidget.h"
#include "widgets/InputFieldWidget.h"
#include "widgets/LabelWidget.h"
#include "widgets/LampWidget.h"
#include "widgets/OutputBarLumeno.h"
#include "widgets/PictureWidget.h"
#include "widgets/PlotParts.h"
#include "widgets/SliderWidget.h"
#include "widgets/TextWidget.h"
#include "widgets/ValueBarWidget.h"

#include <QDebug>

namespace {

/// An empty widget where there is nothing that draws plots, which is said.
BaseWidget* plotWidget(BaseGuiDevice& device, BaseWidget* (*PlotParts::*make)(BaseGuiDevice*))
{
    QString reason;
    if (const PlotParts* const parts = plotParts(reason)) {
        return (parts->*make)(&device);
    }
    qWarning().noquote() << reason;
    return new BaseWidget(&device, nullptr);
}

} // namespace

BaseWidget* ButtonDevice::createWidget()
{
    return new ButtonWidget(this, nullptr);
}

BaseWidget* CheckBoxDevice::createWidget()
{
    return new CheckBoxWidget(this, nullptr);
}

BaseWidget* DropDownListDevice::createWidget()
{
    return new DropDownListWidget(this, nullptr);
}

BaseWidget* IndicatorDevice::createWidget()
{
    return new LampWidget(this, nullptr);
}

BaseWidget* InputDevice::createWidget()
{
    return new InputFieldWidget(this, nullptr);
}

BaseWidget* Label::createWidget()
{
    return new LabelWidget(this, nullptr);
}

BaseWidget* LumenoBarDevice::createWidget()
{
    return new OutputBarLumeno(this, nullptr);
}

BaseWidget* MultilineDevice::createWidget()
{
    return new TextWidget(this, nullptr);
}

BaseWidget* OutputBarDevice::createWidget()
{
    return new ValueBarWidget(this, nullptr);
}

BaseWidget* OutputDigitalDevice::createWidget()
{
    return new DigitalWidget(this, nullptr);
}

BaseWidget* OutputGraphDevice::createWidget()
{
    BaseWidget* const widget = plotWidget(*this, &PlotParts::makeTimeGraph);
    QMetaObject::invokeMethod(this, "resendData", Qt::QueuedConnection);
    return widget;
}

BaseWidget* OutputVector::createWidget()
{
    return plotWidget(*this, &PlotParts::makeVectorGraph);
}

BaseWidget* OutputWithProgress::createWidget()
{
    return new DigitalWithProgress(this, nullptr, true);
}

BaseWidget* PictureDevice::createWidget()
{
    return new PictureWidget(this, nullptr);
}

BaseWidget* QmlGuiDevice::createWidget()
{
    QString reason;
    const QmlParts* const parts = qmlParts(reason);
    return parts ? parts->makeWidget(m_impl.get(), this) : new BaseWidget(this, nullptr);
}

BaseWidget* SliderDevice::createWidget()
{
    return new SliderWidget(this, nullptr);
}
