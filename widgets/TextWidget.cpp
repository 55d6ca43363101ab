#include "widgets/TextWidget.h"

#include "devices/MultilineDevice.h"
#include "widgets/InnerControl.h"

#include <QScrollBar>

void TextWidget::initialise()
{
    auto* const multiline = compatibleDevice<MultilineDevice>(device(), *this);
    if (!multiline) {
        return;
    }
    connect(multiline, SIGNAL(output(QString)), this, SLOT(input(QString)));
    m_text = new LogArea;
    m_scrollingDisabled = getParam(MultilineDevice::kDisableScrolling);
    setFontSize(getParam(MultilineDevice::kFontSize));
    getLayout()->addWidget(m_text);
    setInitialised(true);
}

void TextWidget::setFontSize(int size)
{
    if (m_text) {
        m_text->setFont(QFont("Courier", size));
    }
}

void TextWidget::scrollEnable(bool enabled)
{
    m_scrollingDisabled = !enabled;
}

void TextWidget::input(QString text)
{
    if (!m_text) {
        return;
    }
    m_text->appendLine(text);
    if (m_scrollingDisabled) {
        scrollToTop();
    }
}

void TextWidget::showEvent(QShowEvent* event)
{
    BaseWidget::showEvent(event);
    if (m_text && m_scrollingDisabled) { // a text area shows its cursor when it is first shown
        scrollToTop();
    }
}

void TextWidget::scrollToTop()
{
    QScrollBar* const bar = m_text->verticalScrollBar();
    bar->setValue(bar->minimum());
}
