// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DevicePluginInterface.h"

#include <QObject>

/// The root object of the plug-in: enters the graphical device types into a manager.
class NorvoGuiDevicesPluginInterface : public QObject, public DevicePluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DevicePluginInterface_iid)
    Q_INTERFACES(DevicePluginInterface)

public:
    void registerDeviceType(DeviceManager& manager) override;
};
