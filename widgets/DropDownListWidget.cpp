// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DropDownListWidget.h"

#include "widgets/ShownText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

void DropDownListWidget::build(DropDownListDevice& device)
{
    connect(this, SIGNAL(output(int)), &device, SLOT(input(int)), Qt::UniqueConnection);
    connect(this, SIGNAL(currentTextChanged(QString)), &device, SIGNAL(currentTextChanged(QString)),
            Qt::UniqueConnection);
    connect(&device, SIGNAL(output(int)), this, SLOT(input(int)), Qt::UniqueConnection);
    connect(&device, SIGNAL(output(QString)), this, SLOT(input(QString)), Qt::UniqueConnection);

    m_list = new QComboBox;
    m_list->addItems(device.choices());
    setFocusProxy(m_list);
    if (const auto index = device.getIndex()) {
        m_list->setCurrentIndex(*index);
    }
    if (const auto item = device.getItem()) {
        m_list->setCurrentText(*item);
    }
    m_list->setFont(QFont("Arial", getParam(DropDownListDevice::kSize)));
    connect(m_list, SIGNAL(currentIndexChanged(int)), this, SLOT(onIndexChanged(int)));

    placeUnderCaption(getParam(DropDownListDevice::kLabel).value());
    if (getParam(DropDownListDevice::kEmitOnInit)) {
        onIndexChanged(m_list->currentIndex());
    }
}

void DropDownListWidget::placeUnderCaption(const QString& caption)
{
    if (!caption.isEmpty()) {
        auto* const label = new QLabel;
        norvo::showText(*label, caption);
        label->setFont(QFont("Arial", getParam(DropDownListDevice::kLabelSize)));
        getLayout()->addWidget(label, 0, 0);
        m_list->setAccessibleName(caption);
    }
    setSizePolicy(m_list->sizePolicy());
    getLayout()->addWidget(m_list, caption.isEmpty() ? 0 : 1, 0);
}

void DropDownListWidget::onIndexChanged(int idx)
{
    emit output(idx);
    emit currentTextChanged(m_list ? m_list->currentText() : QString());
}

void DropDownListWidget::input(int idx)
{
    if (m_list && m_list->currentIndex() != idx) {
        const QSignalBlocker blocker(m_list);
        m_list->setCurrentIndex(idx);
    }
}

void DropDownListWidget::input(QString item)
{
    if (m_list && m_list->currentText() != item) {
        const QSignalBlocker blocker(m_list);
        m_list->setCurrentText(item);
    }
}
