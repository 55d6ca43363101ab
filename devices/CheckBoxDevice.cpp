// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/CheckBoxDevice.h"

#include <limits>

CheckBoxDevice::CheckBoxDevice()
{
    addParam(kLabel, "");
    addParam(kSize, "16");
}

void CheckBoxDevice::input(bool check)
{
    emit output(check);
    emit output(check ? 1.0 : 0.0);
}

void CheckBoxDevice::input(double check)
{
    input(check > double(std::numeric_limits<float>::epsilon()));
}
