#include "widgets/DropDownListWidget.h"

#include "devices/DropDownListDevice.h"
#include "widgets/InnerControl.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>

void DropDownListWidget::initialise()
{
    auto* const listDevice = compatibleDevice<DropDownListDevice>(device(), *this);
    if (!listDevice) {
        return;
    }
    connect(this, SIGNAL(output(int)), listDevice, SLOT(input(int)), Qt::UniqueConnection);
    connect(this, SIGNAL(currentTextChanged(QString)), listDevice,
            SIGNAL(currentTextChanged(QString)), Qt::UniqueConnection);
    connect(listDevice, SIGNAL(output(int)), this, SLOT(input(int)), Qt::UniqueConnection);
    connect(listDevice, SIGNAL(output(QString)), this, SLOT(input(QString)), Qt::UniqueConnection);

    delete m_list;
    m_list = new QComboBox;
    m_list->addItems(listDevice->choices());
    setFocusProxy(m_list);
    if (const auto index = listDevice->getIndex()) {
        m_list->setCurrentIndex(*index);
    }
    if (const auto item = listDevice->getItem()) {
        m_list->setCurrentText(*item);
    }
    m_list->setFont(QFont("Arial", getParam(DropDownListDevice::kSize)));
    connect(m_list, SIGNAL(currentIndexChanged(int)), this, SLOT(onIndexChanged(int)));

    placeUnderCaption(getParam(DropDownListDevice::kLabel).value());
    setInitialised(true);
    if (getParam(DropDownListDevice::kEmitOnInit)) {
        onIndexChanged(m_list->currentIndex());
    }
}

void DropDownListWidget::placeUnderCaption(const QString& caption)
{
    delete m_caption;
    m_caption = nullptr;
    if (!caption.isEmpty()) {
        m_caption = new QLabel(caption);
        m_caption->setFont(QFont("Arial", getParam(DropDownListDevice::kLabelSize)));
        getLayout()->addWidget(m_caption, 0, 0);
        m_list->setAccessibleName(caption);
    }
    setSizePolicy(m_list->sizePolicy());
    getLayout()->addWidget(m_list, m_caption ? 1 : 0, 0);
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
