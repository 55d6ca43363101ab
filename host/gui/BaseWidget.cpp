// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/BaseWidget.h"

#include <QGridLayout>

BaseWidget::BaseWidget(BaseGuiDevice* device, QWidget* parent)
    : QWidget(parent), ParametersEntity(device), m_device(device), m_layout(new QGridLayout(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
}

BaseWidget::~BaseWidget() = default;

void BaseWidget::initialise() {}

void BaseWidget::deinitialise()
{
    setInitialised(false);
}

QString BaseWidget::getObjectName() const
{
    return objectName().isEmpty() && m_device ? m_device->getObjectName() : objectName();
}

void BaseWidget::sendParamChanged()
{
    if (m_device) {
        m_device->sendParamChanged();
    }
}

QGridLayout* BaseWidget::getLayout() const
{
    return m_layout;
}
