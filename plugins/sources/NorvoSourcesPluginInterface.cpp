// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/GeneratorDevice.h"
#include "plugins/sources/process/ProcessDevice.h"
#include "plugins/sources/SystemDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"

#include <QObject>

/// The root object of the plug-in whose devices bring real values in.
class NorvoSourcesPluginInterface : public QObject, public DevicePluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DevicePluginInterface_iid FILE "types.json")
    Q_INTERFACES(DevicePluginInterface)

public:
    void registerDeviceType(DeviceManager& manager) override
    {
        manager.registerDeviceType<SystemDevice>("system");
        manager.registerDeviceType<ProcessDevice>("process");
        manager.registerDeviceType<GeneratorDevice>("generator");
    }
};

#include "NorvoSourcesPluginInterface.moc"
