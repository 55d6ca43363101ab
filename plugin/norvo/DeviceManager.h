// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/CaseInsensetiveDictionary.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/Export.h"

#include <QString>
#include <QStringList>

class BaseDevice;

/// The registry of device types. Plug-ins enter their types, the host makes devices by type key.
class NORVO_EXPORT DeviceManager
{
public:
    using Factory = BaseDevice* (*)();

    template <class T>
    static BaseDevice* createTypedDevice()
    {
        return new T;
    }

    /// Enters the type under `key`. Doing so again replaces its factory and its record, and adds
    /// its catalogue paths once more.
    template <class T>
    void registerDeviceType(const QString& key)
    {
        enter(key, &DeviceManager::createTypedDevice<T>, T::typeInfo());
    }

    /// A new device that the caller owns; null for an unknown key. The key's case does not matter.
    BaseDevice* createDevice(const QString& key) const;

    /// "<category>/<type key>" for each category of each type, in the order of registration.
    const QStringList& cataloguePaths() const { return m_cataloguePaths; }
    const CaseInsensetiveDictionary<Factory>& factories() const { return m_factories; }
    const CaseInsensetiveDictionary<DeviceTypeInfo>& typeInfos() const { return m_typeInfos; }

private:
    void enter(const QString& key, Factory factory, const DeviceTypeInfo& info);

    QStringList m_cataloguePaths;
    CaseInsensetiveDictionary<Factory> m_factories;
    CaseInsensetiveDictionary<DeviceTypeInfo> m_typeInfos;
};
