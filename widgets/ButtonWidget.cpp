// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ButtonWidget.h"

#include <QGridLayout>
#include <QPushButton>

void ButtonWidget::build(ButtonDevice& device)
{
    auto* const button = new QPushButton(getParam(ButtonDevice::kText).value());
    if (getParam(ButtonDevice::kMode).value() == ButtonDevice::kToggleMode) {
        button->setCheckable(true);
        button->setChecked(device.isToggled());
        connect(button, SIGNAL(toggled(bool)), &device, SLOT(setToggled(bool)));
        connect(&device, SIGNAL(toggled(bool)), button, SLOT(setChecked(bool)));
    }
    button->setFont(
        QFont(font().family(), getParam(ButtonDevice::kFontSize), QFont::Normal, false));
    connect(button, SIGNAL(clicked()), &device, SLOT(click()));
    setSizePolicy(button->sizePolicy());
    getLayout()->addWidget(button);
    setFocusProxy(button);
}
