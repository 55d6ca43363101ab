// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LampWidget.h"

#include "widgets/LineBreaks.h"
#include "widgets/Looks.h"
#include "widgets/PlateLabel.h"
#include "widgets/ShownText.h"

#include <QGridLayout>

namespace Looks = norvo::Looks;

void LampWidget::build(IndicatorDevice& indicator)
{
    disconnect(&indicator, nullptr, this, SLOT(input(bool)));
    connect(&indicator, SIGNAL(output(bool)), this, SLOT(input(bool)));

    m_look = Looks::lamp(getParam(IndicatorDevice::kColor).value());
    delete m_lamp;
    m_lamp = new PlateLabel;
    norvo::showText(*m_lamp, withLineBreaks(getParam(IndicatorDevice::kCaption).value()));
    setState(false);
    setFontSize(getParam(IndicatorDevice::kFontSize));
    getLayout()->addWidget(m_lamp);
}

void LampWidget::setState(bool on)
{
    if (m_lamp && m_look) {
        m_lamp->setPlate(on ? m_look->lit : m_look->dark);
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
