#include "NorvoGuiDevicesPluginInterface.h"

#include "devices/ButtonDevice.h"
#include "devices/Label.h"
#include "norvo/DeviceManager.h"

#include <QDebug>

void NorvoGuiDevicesPluginInterface::registerDeviceType(DeviceManager& manager)
{
    manager.registerDeviceType<ButtonDevice>("button");
    manager.registerDeviceType<Label>("label");

    qDebug().noquote() << "NorvoGui devices plugins was registered";
}
