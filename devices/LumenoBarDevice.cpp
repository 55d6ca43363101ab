#include "devices/LumenoBarDevice.h"

LumenoBarDevice::LumenoBarDevice()
{
    addParam(kName, "");
    addParam(kUnits, "");
    addParam(kFontSize, "15");
    addParam(kBarWidth, "8");
}

bool LumenoBarDevice::initialise()
{
    m_name = getParam(kName).value();
    m_units = getParam(kUnits).value();
    m_fontSize = getParam(kFontSize);
    m_barWidth = getParam(kBarWidth);
    setDescription(m_name + " bar");
    return true;
}
