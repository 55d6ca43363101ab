#include "widgets/LabelWidget.h"

#include "devices/Label.h"
#include "widgets/InnerControl.h"

#include <QLabel>

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

/// Line breaks as they can be typed in one line: a backslash and an "n".
QString withLineBreaks(QString text)
{
    return text.replace(QLatin1String("\\n"), QLatin1String("\n"));
}

} // namespace

void LabelWidget::initialise()
{
    auto* const labelDevice = compatibleDevice<Label>(device(), *this);
    if (!labelDevice) {
        return;
    }
    connect(labelDevice, SIGNAL(output(QString)), this, SLOT(input(QString)));
    connect(labelDevice, SIGNAL(outputWarning(bool)), this, SLOT(inputWarning(bool)));

    m_font = QFont("Arial", getParam(Label::kFontSize), QFont::Normal, false);
    m_label = new QLabel(withLineBreaks(Label::withoutValue(labelDevice->getValue())));
    m_label->setFont(m_font);
    m_label->setWordWrap(true);
    m_label->setAlignment(alignmentNamed(getParam(Label::kAlignment).value()));
    getLayout()->addWidget(m_label);
    m_warning = false;
    setInitialised(true);
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
    m_label->setText(m_warning ? QString("<font color='red'>%1</font>").arg(value) : value);
    m_label->setFont(m_font);
}
