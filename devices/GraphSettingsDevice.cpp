#include "devices/GraphSettingsDevice.h"

#include "norvo/Categories.h"

GraphSettingsDevice::GraphSettingsDevice()
{
    addParam("color", "orange", {}, true, {});
    addParam("fill", "false", {}, true, {});
    addParam("name", QStringList(), true, {});
}

DeviceTypeInfo GraphSettingsDevice::typeInfo()
{
    return {"", "", {norvo::kCategoryGui}, 0, 0, norvo::kWidgetGroup};
}

bool GraphSettingsDevice::initialise()
{
    m_fill = getParam("fill");
    m_color = QString(getParam("color"));
    m_name = QString(getParam("name"));
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
