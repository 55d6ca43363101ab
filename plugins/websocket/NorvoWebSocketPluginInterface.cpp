// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/WebSocketDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"

#include <QObject>

/// The root object of the plug-in that speaks with WebSocket servers.
class NorvoWebSocketPluginInterface : public QObject, public DevicePluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DevicePluginInterface_iid FILE "types.json")
    Q_INTERFACES(DevicePluginInterface)

public:
    void registerDeviceType(DeviceManager& manager) override
    {
        manager.registerDeviceType<WebSocketDevice>("websocket");
    }
};

#include "NorvoWebSocketPluginInterface.moc"
