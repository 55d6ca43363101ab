// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HoldDevice.h"
#include "plugins/extras/HoldWidget.h"
#include "plugins/extras/ImageDevice.h"
#include "plugins/extras/ImageWidget.h"
#include "plugins/extras/StopDevice.h"
#include "plugins/extras/StopWidget.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"

#include <QObject>

/// The root object of the plug-in whose devices are for hands at a machine.
class NorvoExtrasPluginInterface : public QObject, public DevicePluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DevicePluginInterface_iid FILE "types.json")
    Q_INTERFACES(DevicePluginInterface)

public:
    void registerDeviceType(DeviceManager& manager) override
    {
        manager.registerDeviceType<HoldDevice>("hold");
        manager.registerDeviceType<StopDevice>("stop");
        manager.registerDeviceType<ImageDevice>("image");
    }
};

// Devices know no widget; only this page knows both.

BaseWidget* HoldDevice::createWidget()
{
    return new HoldWidget(this, nullptr);
}

BaseWidget* ImageDevice::createWidget()
{
    return new ImageWidget(this, nullptr);
}

BaseWidget* StopDevice::createWidget()
{
    return new StopWidget(this, nullptr);
}

#include "NorvoExtrasPluginInterface.moc"
