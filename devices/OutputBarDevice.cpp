// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/OutputBarDevice.h"

OutputBarDevice::OutputBarDevice()
{
    addParam(kMinThreshold, "0");
    addParam(kMaxThreshold, "1");
    addParam(kPrecision, "0");
    addParam(kMinValue, "0");
    addParam(kMaxValue, "1");
    addParam(kDigitsStep, "0.5");
    addParam(kDashesStep, "0.1");
    addParam(kScaleHeight, "0.55");
    addParam(kArrowHeight, "0.45");
}

bool OutputBarDevice::initialise()
{
    setDescription("BAR");
    return paramsOk();
}

void OutputBarDevice::input(double value)
{
    if (isRunning()) {
        emit output(value);
    }
}
