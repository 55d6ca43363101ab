#include "norvo/BaseGuiDevice.h"

#include "norvo/Categories.h"

BaseGuiDevice::BaseGuiDevice()
{
    addParam(norvo::kWidgetRow, "-1");
    addParam(norvo::kWidgetColumn, "-1");
    addParam(norvo::kWidgetRowspan, "1");
    addParam(norvo::kWidgetColspan, "1");
    addParam(norvo::kWidgetArea, "");
}

BaseGuiDevice::~BaseGuiDevice() = default;

DeviceTypeInfo BaseGuiDevice::typeInfo()
{
    return {"", "", {norvo::kCategoryGui}, 2, 0, norvo::kWidgetGroup};
}
