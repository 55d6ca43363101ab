// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/TextWidget.h"

#include <QGridLayout>

void TextWidget::build(MultilineDevice& multiline)
{
    connect(&multiline, SIGNAL(output(QString)), this, SLOT(input(QString)));
    m_text = new LogArea;
    scrollEnable(!getParam(MultilineDevice::kDisableScrolling));
    setFontSize(getParam(MultilineDevice::kFontSize));
    getLayout()->addWidget(m_text);
}

void TextWidget::setFontSize(int size)
{
    if (m_text) {
        m_text->setFont(QFont("Courier", size));
    }
}

void TextWidget::scrollEnable(bool enabled)
{
    if (m_text) {
        m_text->setScrollingDisabled(!enabled);
    }
}

void TextWidget::input(QString text)
{
    if (m_text) {
        m_text->appendLine(text);
    }
}
