// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/OutputBarDevice.h"

/// A number on a vertical scale with a filled bar, its digits and a trace of the last ten seconds.
class LumenoBarDevice : public OutputBarDevice
{
    Q_OBJECT

public:
    static constexpr char kName[] = "widget/name";
    static constexpr char kUnits[] = "widget/units";
    static constexpr char kFontSize[] = "widget/fontSize";
    static constexpr char kBarWidth[] = "widget/barWidth";

    LumenoBarDevice();

    bool initialise() override; ///< Always usable, whatever the parameters say.
    BaseWidget* createWidget() override;
};
