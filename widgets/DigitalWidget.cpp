// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DigitalWidget.h"

#include "devices/Decimals.h"
#include "widgets/Looks.h"
#include "widgets/PlateLabel.h"
#include "widgets/ShownText.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>

namespace Looks = norvo::Looks;

void DigitalWidget::build(OutputDigitalDevice& readout)
{
    connect(&readout, SIGNAL(output(double)), this, SLOT(input(double)));
    connect(&readout, SIGNAL(timeoutAlert()), this, SLOT(timeout()));
    connect(&m_face.blinkTimer, SIGNAL(timeout()), this, SLOT(blinkTimerExpired()));

    const int valueSize = getParam(OutputDigitalDevice::kValueSize);
    m_face.minThreshold = getParam(OutputDigitalDevice::kMinThreshold);
    m_face.maxThreshold = getParam(OutputDigitalDevice::kMaxThreshold);
    m_face.precision = norvo::decimals(getParam(OutputDigitalDevice::kPrecision));
    m_face.createLabels(getParam(OutputDigitalDevice::kName).value());
    m_face.digits->setFont(Looks::digitsFont(valueSize));
    m_face.caption->setFont(Looks::captionFont(getParam(OutputDigitalDevice::kLabelSize)));
    createUnits(valueSize / 2);
    setLayout(Qt::Horizontal);
    timeout();
}

void DigitalWidget::createUnits(int pointSize)
{
    const QString units = getParam(OutputDigitalDevice::kUnits).value();
    if (units.isEmpty()) {
        return;
    }
    m_units = new QLabel;
    norvo::showText(*m_units, units);
    m_units->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
    m_units->setFont(QFont("Arial", pointSize));
}

void DigitalWidget::deinitialise() {}

void DigitalWidget::setLayout(Qt::Orientation orientation)
{
    if (!m_face.digits) {
        return;
    }
    QGridLayout* const grid = getLayout();
    if (orientation == Qt::Vertical) {
        grid->addWidget(m_face.digits, 0, 0, Qt::AlignTop);
        return;
    }
    grid->addWidget(m_face.caption, 0, 0, 1, m_units ? 3 : 1, Qt::AlignBottom);
    grid->addWidget(m_face.digits, 1, 0, 1, m_units ? 2 : 1, Qt::AlignTop);
    if (m_units) {
        grid->addWidget(m_units, 1, 2, 1, 1, Qt::AlignCenter);
    }
}

void DigitalWidget::setActive(bool active)
{
    if (!m_face.digits) {
        return;
    }
    if (!active) {
        m_face.digits->setPlate(Looks::kTimedOut.digits);
    }
    // The labels ask for their own repaints. One of the whole with each value would cost readouts a
    // quarter more and show nothing else, so it is asked for when the state changes.
    if (m_face.caption->testAttribute(Qt::WA_ForceDisabled) == active) {
        m_face.caption->setEnabled(active);
        update();
    }
}

void DigitalWidget::timeout()
{
    setActive(false);
}

void DigitalWidget::input(double value)
{
    if (!isInitialised()) {
        return;
    }
    m_face.show(value);
    m_face.digits->setPlate(
        (m_face.isOutOfRange(value) ? Looks::kOutOfRange : Looks::kInRange).digits);
    setActive(true);
}

void DigitalWidget::blinkTimerExpired()
{
    if (isInitialised()) {
        m_face.blink();
        update();
    }
}

void DigitalWidget::makeRoom()
{
    if (isInitialised()) {
        m_face.makeRoom(m_face.maxThreshold, m_face.minThreshold);
    }
}

/// What is polished is about to be laid out for the first time. Room that is made at the show alone
/// would have all of a page laid out twice.
bool DigitalWidget::event(QEvent* event)
{
    if (event->type() == QEvent::Polish) {
        makeRoom();
    }
    return BaseWidget::event(event);
}

void DigitalWidget::showEvent(QShowEvent* event)
{
    BaseWidget::showEvent(event);
    makeRoom();
}
