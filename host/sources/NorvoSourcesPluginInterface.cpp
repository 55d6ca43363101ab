#include "host/sources/NorvoSourcesPluginInterface.h"

#include "host/sources/GeneratorDevice.h"
#include "host/sources/ProcessDevice.h"
#include "host/sources/SystemDevice.h"
#include "norvo/DeviceManager.h"

void NorvoSourcesPluginInterface::registerDeviceType(DeviceManager& manager)
{
    manager.registerDeviceType<SystemDevice>("system");
    manager.registerDeviceType<ProcessDevice>("process");
    manager.registerDeviceType<GeneratorDevice>("generator");
}
