// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/LumenoBarDevice.h"

LumenoBarDevice::LumenoBarDevice()
{
    addParam(kName, "");
    addParam(kUnits, "");
    addParam(kFontSize, "15");
    addParam(kBarWidth, "8");
}

bool LumenoBarDevice::initialise()
{
    setDescription(getParam(kName).value() + " bar");
    return true;
}
