// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/IndicatorDevice.h"

#include "devices/Caption.h"

IndicatorDevice::IndicatorDevice()
{
    addParam(kCaption, QStringList());
    addParam(kColor, "green", {"green", "red", "yellow"});
    addParam(kFontSize, "15");
}

bool IndicatorDevice::initialise()
{
    resolveCaption(*this, kCaption);
    return paramsOk();
}

void IndicatorDevice::input(bool value)
{
    if (isRunning()) {
        emit output(value);
    }
}
