// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/PictureDevice.h"

PictureDevice::PictureDevice()
{
    addParam(kFilename, "");
    addParam(kWidth, "0");
    addParam(kHeight, "0");
}
