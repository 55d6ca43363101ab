#include "devices/IndicatorDevice.h"

#include "devices/Caption.h"
#include "widgets/LampWidget.h"

IndicatorDevice::IndicatorDevice()
{
    addParam(kCaption, QStringList());
    addParam(kColor, "green", {"green", "red", "yellow"});
    addParam(kFontSize, "15");
}

bool IndicatorDevice::initialise()
{
    m_caption = settleCaption(*this, kCaption);
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
