#include "devices/OutputBarDevice.h"

#include "widgets/ValueBarWidget.h"

OutputBarDevice::OutputBarDevice()
{
    addParam("widget/minThreshold", "0", {}, true, {});
    addParam("widget/maxThreshold", "1", {}, true, {});
    addParam("widget/precision", "0", {}, true, {});
    addParam("widget/minValue", "0", {}, true, {});
    addParam("widget/maxValue", "1", {}, true, {});
    addParam("widget/digitsStep", "0.5", {}, true, {});
    addParam("widget/dashesStep", "0.1", {}, true, {});
    addParam("widget/scaleHeight", "0.55", {}, true, {});
    addParam("widget/arrowHeight", "0.45", {}, true, {});
}

bool OutputBarDevice::initialise()
{
    setDescription("BAR");
    return paramsOk();
}

BaseWidget* OutputBarDevice::createWidget()
{
    return new ValueBarWidget(this, nullptr);
}

void OutputBarDevice::input(double value)
{
    if (isRunning()) {
        emit output(value);
    }
}
