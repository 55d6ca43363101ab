// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/ButtonDevice.h"

namespace {

constexpr char kToggled[] = "toggled";

} // namespace

ButtonDevice::ButtonDevice()
{
    addParam(kText, "");
    addParam(kToggled, "false");
    getParam(kToggled).setPersistent();
    addParam(kMode, kToggleMode, {kToggleMode, "click"});
    addParam(kFontSize, "10");
}

bool ButtonDevice::initialise()
{
    m_toggled = getParam(kToggled);
    isToggleMode = getParam(kMode).value() == kToggleMode ? 1 : 0;
    return true;
}

void ButtonDevice::postInitialisation()
{
    if (isToggleMode) {
        emit toggled(m_toggled);
    }
}

void ButtonDevice::setToggled(bool _toggled)
{
    if (_toggled == m_toggled) {
        return;
    }
    setParam(kToggled, _toggled ? "true" : "false");
    emit toggled(_toggled);
    m_toggled = _toggled; // last: receivers may still ask for the state before the change
}

void ButtonDevice::toggle()
{
    if (isToggleMode) {
        setToggled(!m_toggled);
    } else {
        click();
        setToggled(m_toggled);
    }
}

void ButtonDevice::click()
{
    emit clicked();
}
