#include "widgets/ButtonWidget.h"

#include "devices/ButtonDevice.h"
#include "widgets/InnerControl.h"

#include <QPushButton>

void ButtonWidget::initialise()
{
    auto* const buttonDevice = compatibleDevice<ButtonDevice>(device(), *this);
    if (!buttonDevice) {
        return;
    }
    auto* const button = new QPushButton(getParam(ButtonDevice::kText).value());
    if (getParam(ButtonDevice::kMode).value() == ButtonDevice::kToggleMode) {
        button->setCheckable(true);
        button->setChecked(buttonDevice->isToggled());
        connect(button, SIGNAL(toggled(bool)), buttonDevice, SLOT(setToggled(bool)));
        connect(buttonDevice, SIGNAL(toggled(bool)), button, SLOT(setChecked(bool)));
    }
    button->setFont(controlFont(*this, getParam(ButtonDevice::kFontSize)));
    connect(button, SIGNAL(clicked()), buttonDevice, SLOT(click()));
    embedControl(*this, button);
    setInitialised(true);
}
