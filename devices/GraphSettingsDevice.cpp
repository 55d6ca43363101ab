// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/GraphSettingsDevice.h"

#include "norvo/Categories.h"

GraphSettingsDevice::GraphSettingsDevice()
{
    addParam(kColor, "orange");
    addParam(kFill, "false");
    addParam(kName, QStringList());
}

DeviceTypeInfo GraphSettingsDevice::typeInfo()
{
    return {"", "", {norvo::kCategoryGui}, 0, 0, norvo::kWidgetGroup};
}

bool GraphSettingsDevice::initialise()
{
    m_fill = getParam(kFill);
    m_color = QString(getParam(kColor));
    m_name = QString(getParam(kName));
    setDescription(m_name.isEmpty() ? m_color : m_name + " ");
    return true;
}

void GraphSettingsDevice::postInitialisation()
{
    if (!m_name.isEmpty()) {
        emit setName(m_name);
    }
    if (!m_color.isEmpty()) {
        emit setColor(m_color);
    }
    emit setFilled(m_fill);
}

void GraphSettingsDevice::input(double value)
{
    emit output(value);
}
