// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"
#include "norvo/DoubleVec.h"

/// An array of numbers as one curve over its index; every array leaves unchanged.
class OutputVector : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kName[] = "name";
    static constexpr char kMinValue[] = "widget/minValue";
    static constexpr char kMaxValue[] = "widget/maxValue";
    static constexpr char kFillArea[] = "widget/fillArea";

    OutputVector();

    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(DoubleVec data);

public slots:
    void input(DoubleVec data); ///< Ignored unless the device is running.
};
