// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/NorvoSourcesPluginInterface.h"

#include "plugins/sources/GeneratorDevice.h"
#include "plugins/sources/process/ProcessDevice.h"
#include "plugins/sources/SystemDevice.h"
#include "norvo/DeviceManager.h"

void NorvoSourcesPluginInterface::registerDeviceType(DeviceManager& manager)
{
    manager.registerDeviceType<SystemDevice>("system");
    manager.registerDeviceType<ProcessDevice>("process");
    manager.registerDeviceType<GeneratorDevice>("generator");
}
