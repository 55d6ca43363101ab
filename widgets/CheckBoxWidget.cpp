// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/CheckBoxWidget.h"

#include "widgets/Looks.h"

#include <QCheckBox>
#include <QGridLayout>

void CheckBoxWidget::build(CheckBoxDevice& device)
{
    connect(this, SIGNAL(output(bool)), &device, SLOT(input(bool)));
    connect(&device, SIGNAL(output(bool)), this, SLOT(input(bool)));

    const int size = getParam(CheckBoxDevice::kSize);
    m_checkBox = new QCheckBox(getParam(CheckBoxDevice::kLabel).value());
    m_checkBox->setFont(QFont("Arial", size));
    m_checkBox->setStyleSheet(norvo::Looks::checkBox(size));
    setFocusProxy(m_checkBox);
    connect(m_checkBox, SIGNAL(stateChanged(int)), this, SLOT(onStateChanged(int)));
    getLayout()->addWidget(m_checkBox, 0, 0);
}

void CheckBoxWidget::onStateChanged(int state)
{
    emit output(state >= 1);
}

void CheckBoxWidget::input(bool check)
{
    if (m_checkBox) {
        m_checkBox->setChecked(check);
    }
}
