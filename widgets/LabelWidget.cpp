// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LabelWidget.h"

#include "widgets/BoundedLabel.h"
#include "widgets/LineBreaks.h"
#include "widgets/ShownText.h"

#include <QGridLayout>

namespace {

Qt::Alignment alignmentNamed(const QString& name)
{
    if (name == QLatin1String("left")) {
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
    if (name == QLatin1String("right")) {
        return Qt::AlignRight | Qt::AlignVCenter;
    }
    return Qt::AlignHCenter | Qt::AlignVCenter;
}

} // namespace

void LabelWidget::build(Label& label)
{
    connect(&label, SIGNAL(output(QString)), this, SLOT(input(QString)));
    connect(&label, SIGNAL(outputWarning(bool)), this, SLOT(inputWarning(bool)));

    m_label = new BoundedLabel;
    m_label->setFont(QFont("Arial", getParam(Label::kFontSize), QFont::Normal, false));
    m_label->setWordWrap(true);
    m_label->setAlignment(alignmentNamed(getParam(Label::kAlignment).value()));
    getLayout()->addWidget(m_label);
    m_font = m_label->font();
    norvo::showText(*m_label, withLineBreaks(Label::withoutValue(label.getValue())));
    m_warning = false;
}

void LabelWidget::deinitialise()
{
    m_label = nullptr;
    BaseWidget::deinitialise();
}

void LabelWidget::inputWarning(bool warning)
{
    m_warning = warning;
}

void LabelWidget::input(QString value)
{
    if (!m_label) {
        return;
    }
    if (m_warning) {
        norvo::showWarning(*m_label, value);
    } else {
        norvo::showText(*m_label, value);
    }
    if (!m_label->font().isCopyOf(m_font)) { // setting it costs more than the text
        m_label->setFont(m_font);
        m_font = m_label->font();
    }
}
