// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/OutputDigitalDevice.h"

#include "devices/Caption.h"

namespace {

constexpr char kTimeout[] = "timeout";

} // namespace

OutputDigitalDevice::OutputDigitalDevice()
{
    addParam(kName, "");
    addParam(kTimeout, "1000");
    addParam(kUnits, "");
    addParam(kMinThreshold, "0");
    addParam(kMaxThreshold, "100");
    addParam(kPrecision, "0");
    addParam(kLabelSize, "16");
    addParam(kValueSize, "60");
}

bool OutputDigitalDevice::initialise()
{
    resolveCaption(*this, kName);
    const bool ok = paramsOk();
    startTimeout(ok ? int(getParam(kTimeout)) : 0);
    return ok;
}

void OutputDigitalDevice::timerTimeout()
{
    emit timeoutAlert();
}

void OutputDigitalDevice::input(double value)
{
    if (passOnNumber(value)) {
        restartTimeout();
    }
}

void OutputDigitalDevice::input(QString text)
{
    if (passOnText(text)) {
        restartTimeout();
    }
}
