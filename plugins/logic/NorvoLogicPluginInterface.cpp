// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/CalcDevice.h"
#include "plugins/logic/SettleDevice.h"
#include "plugins/logic/TimerDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"

#include <QObject>

/// The root object of the plug-in whose devices stand between others.
class NorvoLogicPluginInterface : public QObject, public DevicePluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DevicePluginInterface_iid FILE "types.json")
    Q_INTERFACES(DevicePluginInterface)

public:
    void registerDeviceType(DeviceManager& manager) override
    {
        manager.registerDeviceType<CalcDevice>("calc");
        manager.registerDeviceType<SettleDevice>("settle");
        manager.registerDeviceType<TimerDevice>("timer");
    }
};

#include "NorvoLogicPluginInterface.moc"
