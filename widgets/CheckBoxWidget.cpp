#include "widgets/CheckBoxWidget.h"

#include "devices/CheckBoxDevice.h"
#include "widgets/InnerControl.h"

#include <QCheckBox>

void CheckBoxWidget::initialise()
{
    auto* const checkBoxDevice = compatibleDevice<CheckBoxDevice>(device(), *this);
    if (!checkBoxDevice) {
        return;
    }
    connect(this, SIGNAL(output(bool)), checkBoxDevice, SLOT(input(bool)));
    connect(checkBoxDevice, SIGNAL(output(bool)), this, SLOT(input(bool)));

    const int size = getParam(CheckBoxDevice::kSize);
    m_checkBox = new QCheckBox(getParam(CheckBoxDevice::kLabel).value());
    m_checkBox->setFont(QFont("Arial", size));
    m_checkBox->setStyleSheet(
        QString("QCheckBox::indicator {width: %1px; height: %2px;}").arg(size).arg(size));
    setFocusProxy(m_checkBox);
    connect(m_checkBox, SIGNAL(stateChanged(int)), this, SLOT(onStateChanged(int)));
    getLayout()->addWidget(m_checkBox, 0, 0);
    setInitialised(true);
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
