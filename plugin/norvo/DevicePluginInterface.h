// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QtPlugin>

class DeviceManager;

/// What a plug-in's root object implements; the host calls it once for each manager.
class DevicePluginInterface
{
public:
    virtual ~DevicePluginInterface() = default;
    virtual void registerDeviceType(DeviceManager& manager) = 0;
};

#define DevicePluginInterface_iid "Norvo.DevicePluginInterface"
Q_DECLARE_INTERFACE(DevicePluginInterface, DevicePluginInterface_iid)
