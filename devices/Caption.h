// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"

/// The device's caption: the parameter of that name or, where it is empty, the device's object
/// name, which is then written into it. The caption becomes the device's description.
inline QString resolveCaption(BaseDevice& device, const QString& param)
{
    QString caption = device.getParam(param).value();
    if (caption.isEmpty()) {
        caption = device.getObjectName();
        device.setParam(param, caption);
    }
    device.setDescription(caption);
    return caption;
}
