#include "widgets/LampWidget.h"

#include "devices/IndicatorDevice.h"
#include "widgets/InnerControl.h"
#include "widgets/LineBreaks.h"

#include <QLabel>

namespace {

struct Look
{
    const char* color;
    QString lit;
    QString dark;
};

const Look kLooks[] = {
    {"green",
     "QLabel { background-color : green; color : white; border: 1px solid #222222; border-radius: "
     "5px; }",
     "QLabel { background-color : #2e4e18; color : gray; border: 1px solid #222222; "
     "border-radius: 5px; }"},
    {"red",
     "QLabel { background-color : red; color : white; border: 1px solid #222222; border-radius: "
     "5px; }",
     "QLabel { background-color : #420000; color : gray; border: 1px solid #222222; "
     "border-radius: 5px; }"},
    {"yellow",
     "QLabel { background-color : #e5e500; color : black; border: 1px solid #222222; "
     "border-radius: 5px; }",
     "QLabel { background-color : #8d6b0f ; color : gray; border: 1px solid #222222; "
     "border-radius: 5px; }"},
};

} // namespace

void LampWidget::initialise()
{
    auto* const indicator = compatibleDevice<IndicatorDevice>(device(), *this);
    if (!indicator) {
        return;
    }
    disconnect(indicator, nullptr, this, SLOT(input(bool)));
    connect(indicator, SIGNAL(output(bool)), this, SLOT(input(bool)));

    m_color = getParam(IndicatorDevice::kColor).value();
    m_fontSize = getParam(IndicatorDevice::kFontSize);
    delete m_lamp;
    m_lamp = new QLabel(withLineBreaks(getParam(IndicatorDevice::kCaption).value()));
    m_lamp->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    setState(false);
    setFontSize(m_fontSize);
    getLayout()->addWidget(m_lamp);
    setInitialised(true);
}

void LampWidget::setState(bool on)
{
    if (!m_lamp) {
        return;
    }
    for (const Look& look : kLooks) {
        if (m_color != QLatin1String(look.color)) {
            continue;
        }
        const QString& sheet = on ? look.lit : look.dark;
        if (m_lamp->styleSheet() != sheet) { // setting the same again costs as much as a new one
            m_lamp->setStyleSheet(sheet);
        }
        return;
    }
}

void LampWidget::setFontSize(int size)
{
    if (m_lamp) {
        m_lamp->setFont(QFont("Arial", size));
    }
}

void LampWidget::input(bool value)
{
    setState(value);
    update();
}
