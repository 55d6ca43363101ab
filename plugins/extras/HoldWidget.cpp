// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HoldWidget.h"

#include "plugins/extras/HeldKey.h"
#include "plugins/extras/HoldDevice.h"

#include <QGridLayout>

HoldWidget::HoldWidget(HoldDevice* device, QWidget* parent)
    : BaseWidget(device, parent), m_device(device)
{}

void HoldWidget::initialise()
{
    auto* const key = new HeldKey(getParam(HoldDevice::kText).value());
    key->setFont(QFont(font().family(), getParam(HoldDevice::kFontSize)));
    connect(key, &HeldKey::handOn, m_device, &HoldDevice::press);
    connect(key, &HeldKey::handOff, m_device, &HoldDevice::release);
    connect(m_device, &HoldDevice::held, key, &HeldKey::setDown);
    setSizePolicy(key->sizePolicy());
    getLayout()->addWidget(key);
    setFocusProxy(key);
    setInitialised(true);
}
