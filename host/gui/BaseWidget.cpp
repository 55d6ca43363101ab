// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/BaseWidget.h"

#include <QGridLayout>

/// A layout asks to be laid out as it comes to its widget, and Qt looks for an equal request among
/// all that wait: with thousands of widgets on a page, that took longer than to make them. One that
/// needs it already asks for nothing, and is laid out when the widget is shown.
BaseWidget::BaseWidget(BaseGuiDevice* device, QWidget* parent)
    : QWidget(parent), ParametersEntity(device), m_device(device), m_layout(new QGridLayout)
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->invalidate();
    setLayout(m_layout);
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
