#include "devices/IndicatorDevice.h"

#include "widgets/LampWidget.h"

IndicatorDevice::IndicatorDevice()
{
    addParam(kCaption, QStringList());
    addParam(kColor, "green", {"green", "red", "yellow"});
    addParam(kFontSize, "15");
}

bool IndicatorDevice::initialise()
{
    m_caption = getParam(kCaption).value();
    if (m_caption.isEmpty()) {
        m_caption = objectName();
        setParam(kCaption, m_caption);
    }
    setDescription(m_caption);
    return paramsOk();
}

BaseWidget* IndicatorDevice::createWidget()
{
    return new LampWidget(this, nullptr);
}

void IndicatorDevice::input(bool value)
{
    if (isRunning()) {
        emit output(value);
    }
}
