// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A fixed picture on the panel. No inputs, no outputs.
class PictureDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kFilename[] = "widget/filename";
    static constexpr char kWidth[] = "widget/width";
    static constexpr char kHeight[] = "widget/height";

    PictureDevice();

    BaseWidget* createWidget() override;
};
