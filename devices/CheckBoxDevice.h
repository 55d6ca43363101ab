// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A check box whose state leaves as yes or no and as 1 or 0. The box on screen is the state.
class CheckBoxDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kLabel[] = "widget/label";
    static constexpr char kSize[] = "widget/size";

    CheckBoxDevice();

    BaseWidget* createWidget() override;

signals:
    void output(bool check);
    void output(double check); ///< 1 or 0, after its yes or no.

public slots:
    /// Passes every state on, a repeated one too. One that changes the box comes back from there
    /// and passes a second time, before the number of the first.
    void input(bool check);
    void input(double check); ///< Yes above the single-precision epsilon; NaN is no.
};
