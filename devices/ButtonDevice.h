// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A push button that sends a pulse or, in toggle mode, latches.
///
/// The latched state is an output, an input and the parameter "toggled" at once, so that it
/// outlives the run of the panel.
class ButtonDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kText[] = "text";
    static constexpr char kMode[] = "mode";
    static constexpr char kToggleMode[] = "toggle"; ///< Any other mode is click mode.
    static constexpr char kFontSize[] = "widget/fontSize";

    ButtonDevice();

    bool isToggled() const { return m_toggled; }

    bool initialise() override;
    void postInitialisation() override; ///< Emits the state, in toggle mode only.
    BaseWidget* createWidget() override;

signals:
    void toggled(bool toggled); ///< isToggled() still answers the old state meanwhile.
    void clicked();

public slots:
    void setToggled(bool _toggled = true); ///< Latches in click mode as well.
    void toggle();                         ///< In click mode a click.
    void click();

private:
    bool m_toggled = false;
    qint32 isToggleMode = 0; ///< 1: toggle mode, 0: click mode.
};
