#include "devices/CheckBoxDevice.h"

#include "widgets/CheckBoxWidget.h"

#include <limits>

CheckBoxDevice::CheckBoxDevice()
{
    addParam(kLabel, "");
    addParam(kSize, "16");
}

BaseWidget* CheckBoxDevice::createWidget()
{
    return new CheckBoxWidget(this, nullptr);
}

void CheckBoxDevice::input(bool check)
{
    emit output(check);
    emit output(check ? 1.0 : 0.0);
}

void CheckBoxDevice::input(double check)
{
    input(check > double(std::numeric_limits<float>::epsilon()));
}
