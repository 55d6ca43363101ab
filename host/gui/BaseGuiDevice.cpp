// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/BaseGuiDevice.h"

BaseGuiDevice::BaseGuiDevice()
{
    addParam(norvo::kWidgetRow, "-1");
    addParam(norvo::kWidgetColumn, "-1");
    addParam(norvo::kWidgetRowspan, "1");
    addParam(norvo::kWidgetColspan, "1");
    addParam(norvo::kWidgetArea, "");
}

BaseGuiDevice::~BaseGuiDevice() = default;
