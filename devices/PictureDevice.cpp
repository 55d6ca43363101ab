#include "devices/PictureDevice.h"

#include "widgets/PictureWidget.h"

PictureDevice::PictureDevice()
{
    addParam(kFilename, "");
    addParam(kWidth, "0");
    addParam(kHeight, "0");
}

BaseWidget* PictureDevice::createWidget()
{
    return new PictureWidget(this, nullptr);
}
