// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/SliderDevice.h"

#include <algorithm>

SliderDevice::SliderDevice()
{
    addParam(kMinValue, "0");
    addParam(kMaxValue, "100");
    addParam(kStep, "1");
    addParam(kOrientation, "vertical", {kHorizontal, "vertical"});
}

QStringList SliderDevice::grabMethods(const QString& name, QMetaMethod::MethodType type,
                                      bool flag) const
{
    QStringList methods = BaseDevice::grabMethods(name, type, flag);
    if (!flag) {
        const auto isForTheWidget = [](const QString& method) { return method.contains("wg"); };
        methods.erase(std::remove_if(methods.begin(), methods.end(), isForTheWidget),
                      methods.end());
    }
    return methods;
}

void SliderDevice::wgInput(double value)
{
    emit output(value);
}

void SliderDevice::input(double value)
{
    emit wgOutput(value);
}
