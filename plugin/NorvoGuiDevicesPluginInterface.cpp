#include "NorvoGuiDevicesPluginInterface.h"

#include "devices/ButtonDevice.h"
#include "devices/InputDevice.h"
#include "devices/Label.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/OutputWithProgress.h"
#include "norvo/DeviceManager.h"

#include <QDebug>

void NorvoGuiDevicesPluginInterface::registerDeviceType(DeviceManager& manager)
{
    manager.registerDeviceType<ButtonDevice>("button");
    manager.registerDeviceType<InputDevice>("input");
    manager.registerDeviceType<Label>("label");
    manager.registerDeviceType<OutputWithProgress>("output_with_progress");
    manager.registerDeviceType<OutputDigitalDevice>("output_digital");

    qDebug().noquote() << "NorvoGui devices plugins was registered";
}
