// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A slider whose position leaves as a whole number. The slider on screen is the value.
class SliderDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kMinValue[] = "widget/minValue";
    static constexpr char kMaxValue[] = "widget/maxValue";
    static constexpr char kStep[] = "widget/step";
    static constexpr char kOrientation[] = "widget/orientation";
    static constexpr char kHorizontal[] = "horizontal"; ///< Any other orientation is vertical.

    SliderDevice();

    /// Without `flag` the two methods that the widget talks through are left out.
    QStringList grabMethods(const QString& name, QMetaMethod::MethodType type,
                            bool flag) const override;
    BaseWidget* createWidget() override;

signals:
    void wgOutput(double value);
    void output(double value);

public slots:
    void wgInput(double value);
    void input(double value); ///< Comes out again only if it moves the slider.
};
