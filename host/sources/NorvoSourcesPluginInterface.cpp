#include "host/sources/NorvoSourcesPluginInterface.h"

#include "host/sources/SystemDevice.h"
#include "norvo/DeviceManager.h"

void NorvoSourcesPluginInterface::registerDeviceType(DeviceManager& manager)
{
    manager.registerDeviceType<SystemDevice>("system");
}
