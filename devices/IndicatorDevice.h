// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A lamp that shows yes or no.
class IndicatorDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kCaption[] = "widget/caption";
    static constexpr char kColor[] = "widget/color";
    static constexpr char kFontSize[] = "widget/fontSize";

    IndicatorDevice();

    /// A lamp without caption takes the object's name for it, in the parameter too.
    bool initialise() override;
    BaseWidget* createWidget() override;

signals:
    void output(bool value);

public slots:
    void input(bool value); ///< Ignored unless the device is running.
};
