#include "devices/LumenoBarDevice.h"

#include "widgets/OutputBarLumeno.h"

LumenoBarDevice::LumenoBarDevice()
{
    addParam("widget/name", "", {}, true, {});
    addParam("widget/units", "", {}, true, {});
    addParam("widget/fontSize", "15", {}, true, {});
    addParam("widget/barWidth", "8", {}, true, {});
}

bool LumenoBarDevice::initialise()
{
    m_name = QString(getParam("widget/name"));
    m_units = QString(getParam("widget/units"));
    m_fontSize = getParam("widget/fontSize");
    m_barWidth = getParam("widget/barWidth");
    setDescription(m_name + " bar");
    return true;
}

BaseWidget* LumenoBarDevice::createWidget()
{
    return new OutputBarLumeno(this, nullptr);
}
