// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/Categories.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/Export.h"

class BaseWidget;

/// A device that shows itself on the panel.
///
/// Declares the five placement parameters, which belong to the host: "widget/row" and
/// "widget/column" (-1: the next free place), "widget/rowspan", "widget/colspan" and "widget/area"
/// (the tab; empty: the first).
class NORVOGUI_EXPORT BaseGuiDevice : public BaseDevice
{
    Q_OBJECT

public:
    BaseGuiDevice();
    ~BaseGuiDevice() override;

    virtual BaseWidget* createWidget() = 0; ///< A new widget without parent; the caller owns it.

    static DeviceTypeInfo typeInfo()
    {
        return {"", "", {norvo::kCategoryGui}, DeviceTypeInfo::kWithWidget, 0, norvo::kWidgetGroup};
    }
};
