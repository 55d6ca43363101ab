// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/DeviceManager.h"

BaseDevice* DeviceManager::createDevice(const QString& key) const
{
    const Factory factory = m_factories.value(key, nullptr);
    return factory ? factory() : nullptr;
}

void DeviceManager::enter(const QString& key, Factory factory, const DeviceTypeInfo& info)
{
    for (const QString& category : info.categories) {
        m_cataloguePaths.append(category + "/" + key);
    }
    m_factories.insert(key, factory);
    m_typeInfos.insert(key, info);
}
