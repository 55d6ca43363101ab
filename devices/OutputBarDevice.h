// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A number on a horizontal scale with a green zone between two thresholds. Passes values on.
class OutputBarDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kMinThreshold[] = "widget/minThreshold";
    static constexpr char kMaxThreshold[] = "widget/maxThreshold";
    static constexpr char kPrecision[] = "widget/precision";
    static constexpr char kMinValue[] = "widget/minValue";
    static constexpr char kMaxValue[] = "widget/maxValue";
    static constexpr char kDigitsStep[] = "widget/digitsStep";
    static constexpr char kDashesStep[] = "widget/dashesStep";
    static constexpr char kScaleHeight[] = "widget/scaleHeight";
    static constexpr char kArrowHeight[] = "widget/arrowHeight";

    OutputBarDevice();

    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(double value);

public slots:
    void input(double value); ///< Ignored unless the device is running.
};
