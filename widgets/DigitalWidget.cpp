#include "widgets/DigitalWidget.h"

#include "devices/Decimals.h"
#include "devices/OutputDigitalDevice.h"
#include "widgets/InnerControl.h"
#include "widgets/ReadoutStyle.h"

#include <QLabel>

namespace Looks = norvo::Looks;

void DigitalWidget::initialise()
{
    auto* const readout = compatibleDevice<OutputDigitalDevice>(device(), *this);
    if (!readout) {
        return;
    }
    connect(readout, SIGNAL(output(double)), this, SLOT(input(double)));
    connect(readout, SIGNAL(timeoutAlert()), this, SLOT(timeout()));
    connect(&m_blinkTimer, SIGNAL(timeout()), this, SLOT(blinkTimerExpired()));

    m_minThreshold = getParam(OutputDigitalDevice::kMinThreshold);
    m_maxThreshold = getParam(OutputDigitalDevice::kMaxThreshold);
    m_precision = norvo::decimals(getParam(OutputDigitalDevice::kPrecision));
    createLabels();
    setLayout(Qt::Horizontal);
    timeout();
    setInitialised(true);
    m_timedOut = true;
    m_outOfRange = false;
}

void DigitalWidget::createLabels()
{
    const int labelSize = getParam(OutputDigitalDevice::kLabelSize);
    const int valueSize = getParam(OutputDigitalDevice::kValueSize);
    const QString units = getParam(OutputDigitalDevice::kUnits).value();

    m_value = new QLabel(QString::number(0.0, 'f', m_precision));
    m_value->setStyleSheet(Looks::kInRange.digits);
    m_value->setAlignment(Qt::AlignCenter);
    m_value->setFont(Looks::digitsFont(valueSize));

    m_caption = new QLabel(getParam(OutputDigitalDevice::kName).value());
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_caption->setFont(Looks::captionFont(labelSize));

    if (!units.isEmpty()) {
        m_units = new QLabel(units);
        m_units->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
        m_units->setFont(QFont("Arial", valueSize / 2));
    }
}

void DigitalWidget::deinitialise() {}

void DigitalWidget::setLayout(Qt::Orientation orientation)
{
    if (!m_value) {
        return;
    }
    QGridLayout* const grid = getLayout();
    if (orientation == Qt::Vertical) {
        grid->addWidget(m_value, 0, 0, Qt::AlignTop);
        return;
    }
    grid->addWidget(m_caption, 0, 0, 1, m_units ? 3 : 1, Qt::AlignBottom);
    grid->addWidget(m_value, 1, 0, 1, m_units ? 2 : 1, Qt::AlignTop);
    if (m_units) {
        grid->addWidget(m_units, 1, 2, 1, 1, Qt::AlignCenter);
    }
}

void DigitalWidget::setActive(bool active)
{
    if (!m_value) {
        return;
    }
    if (!active) {
        Looks::apply(m_value, Looks::kTimedOut.digits);
    }
    // The labels ask for their own repaints; the rest is drawn anew only when the state changes.
    if (m_caption->isEnabled() != active) {
        m_caption->setEnabled(active);
        update();
    }
}

void DigitalWidget::timeout()
{
    setActive(false);
    m_timedOut = true;
}

bool DigitalWidget::isOutOfRange(double value) const
{
    return m_minThreshold > value || value > m_maxThreshold;
}

void DigitalWidget::input(double value)
{
    if (!isInitialised()) {
        return;
    }
    m_timedOut = false;
    m_value->setText(QString::number(value, 'f', m_precision));
    m_outOfRange = isOutOfRange(value);
    Looks::apply(m_value, (m_outOfRange ? Looks::kOutOfRange : Looks::kInRange).digits);
    setActive(true);
}

void DigitalWidget::blinkTimerExpired()
{
    if (isInitialised()) {
        ReadoutStyle::blink(m_blinkTimer, m_caption);
        update();
    }
}

void DigitalWidget::showEvent(QShowEvent* event)
{
    BaseWidget::showEvent(event);
    if (!isInitialised()) {
        return;
    }
    const QString sample = ReadoutStyle::widthSample(
        ReadoutStyle::roundedMagnitude(m_maxThreshold, m_minThreshold), m_precision);
    m_value->setMinimumWidth(m_value->fontMetrics().horizontalAdvance(sample));
    m_value->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}
