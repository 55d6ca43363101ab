#include "widgets/LabelWidget.h"

#include "devices/Label.h"
#include "widgets/InnerControl.h"
#include "widgets/LineBreaks.h"

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
    setFontAgain();
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
    if (!m_label->font().isCopyOf(m_shownFont)) { // somebody else has changed it
        setFontAgain();
    }
}

void LabelWidget::setFontAgain()
{
    m_label->setFont(m_font);
    m_shownFont = m_label->font();
}
