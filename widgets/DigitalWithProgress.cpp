// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DigitalWithProgress.h"

#include "devices/Decimals.h"
#include "norvo/Truncation.h"
#include "widgets/Looks.h"
#include "widgets/PlateLabel.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>

#include <cmath>

namespace Looks = norvo::Looks;

namespace {

constexpr int kBarSteps = 1000;
constexpr int kBarHeight = 25;
constexpr int kBlinkMs = 300;

/// Moves the bar and leaves the painting to the event loop; QProgressBar would paint at once.
void moveBar(QProgressBar* bar, int step)
{
    if (bar->value() == step) {
        return;
    }
    bar->setUpdatesEnabled(false);
    bar->setValue(step);
    bar->setUpdatesEnabled(true);
}

} // namespace

DigitalWithProgress::DigitalWithProgress(BaseGuiDevice* device, QWidget* parent, bool withProgress)
    : DeviceView(device, parent), m_withProgress(withProgress)
{}

void DigitalWithProgress::build(OutputWithProgress& readout)
{
    connect(&readout, SIGNAL(output(double)), this, SLOT(input(double)));
    connect(&readout, SIGNAL(timeoutAlert()), this, SLOT(timeout()));
    connect(&m_face.blinkTimer, SIGNAL(timeout()), this, SLOT(blinkTimerExpired()));

    m_minValue = readout.getMinValue();
    m_maxValue = readout.getMaxValue();
    m_face.minThreshold = readout.getMinThreshold();
    m_face.maxThreshold = readout.getMaxThreshold();
    m_face.precision = norvo::decimals(readout.getPrecision());
    m_alarmEnabled = readout.getAlarmEnabled();
    m_face.createLabels(readout.getName());
    if (m_withProgress) {
        createBar();
    }
    setFontSize(60, 16, 12);
    setLayout(Qt::Horizontal);
    timeout();
    mousePressEvent(nullptr);
    m_alarmRunning = true; // though quiet: the first value ends it
}

void DigitalWithProgress::createBar()
{
    m_minLabel = new QLabel(QString::number(m_minValue, 'g', 6));
    m_maxLabel = new QLabel(QString::number(m_maxValue, 'g', 6));
    m_bar = new QProgressBar;
    m_bar->setRange(0, kBarSteps);
    // A position that is no number is one beyond the bar, which changes nothing.
    m_bar->setValue(norvo::truncatedToInt(std::fmin(barPosition(0), kBarSteps + 1)));
    m_bar->setStyleSheet(Looks::kInRange.bar);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(kBarHeight);
}

void DigitalWithProgress::deinitialise() {}

void DigitalWithProgress::setFontSize(int valueSize, int captionSize, int scaleLabelSize)
{
    if (!isInitialised()) {
        return;
    }
    m_face.digits->setFont(Looks::digitsFont(valueSize));
    m_face.caption->setFont(Looks::captionFont(captionSize));
    if (m_withProgress) {
        m_minLabel->setFont(Looks::captionFont(scaleLabelSize));
        m_maxLabel->setFont(Looks::captionFont(scaleLabelSize));
    }
    setMinimumWidth(m_face.makeRoom(m_maxValue, m_minValue, m_minValue < 0 ? 2 : 1)); // with a sign
}

void DigitalWithProgress::setLayout(Qt::Orientation orientation)
{
    if (!m_face.digits) {
        return;
    }
    if (m_bar) {
        m_bar->setOrientation(orientation);
    }
    QGridLayout* const grid = getLayout();
    if (orientation == Qt::Vertical) {
        grid->addWidget(m_face.digits, 0, 0, Qt::AlignTop);
        if (m_bar) {
            grid->addWidget(m_bar, 0, 1, 2, 1);
            grid->addWidget(m_maxLabel, 0, 2, Qt::AlignTop);
            grid->addWidget(m_minLabel, 1, 2, Qt::AlignBottom);
        }
        return;
    }
    grid->addWidget(m_face.caption, 0, 0, 1, 2, Qt::AlignBottom);
    grid->addWidget(m_face.digits, 1, 0, 1, 2, Qt::AlignTop);
    grid->setRowStretch(0, 1);
    grid->setRowStretch(1, 3);
    if (m_bar) {
        grid->addWidget(m_bar, 2, 0, 1, 2, Qt::AlignTop);
        grid->addWidget(m_minLabel, 3, 0, Qt::AlignLeft | Qt::AlignTop);
        grid->addWidget(m_maxLabel, 3, 1, Qt::AlignRight | Qt::AlignTop);
        grid->setRowStretch(2, 1);
        grid->setRowStretch(3, 1);
    }
}

void DigitalWithProgress::setActive(bool active)
{
    if (!m_face.digits) {
        return;
    }
    if (!active) {
        showState(Looks::kTimedOut);
    }
    if (m_bar) {
        m_bar->setEnabled(active);
        m_minLabel->setEnabled(active);
        m_maxLabel->setEnabled(active);
    }
    m_face.caption->setEnabled(active);
    update();
}

void DigitalWithProgress::showState(const Looks::Readout& look)
{
    m_face.digits->setPlate(look.digits);
    if (m_bar) {
        Looks::apply(m_bar, look.bar);
    }
}

void DigitalWithProgress::timeout()
{
    setActive(false);
    m_timedOut = true;
    checkForAlarm();
}

double DigitalWithProgress::barPosition(double value) const
{
    return (value - m_minValue) / (m_maxValue - m_minValue) * kBarSteps;
}

void DigitalWithProgress::input(double value)
{
    if (!isInitialised()) {
        return;
    }
    m_timedOut = false;
    checkForAlarm();

    m_face.show(value);
    m_outOfRange = m_face.isOutOfRange(value);
    showState(m_outOfRange ? Looks::kOutOfRange : Looks::kInRange);
    checkForAlarm();

    if (m_bar) {
        moveBar(m_bar, int(std::fmin(std::fmax(barPosition(value), 0), kBarSteps)));
    }
    setActive(true);
}

void DigitalWithProgress::checkForAlarm()
{
    if (!isInitialised()) {
        return;
    }
    if (m_timedOut && m_outOfRange) {
        m_outOfRange = false;
        startAlarm();
    } else if (m_timedOut || m_outOfRange) {
        if (!m_alarmRunning) {
            startAlarm();
        }
    } else if (m_alarmRunning) {
        m_alarmRunning = false;
        stopAlarm();
    }
}

void DigitalWithProgress::startAlarm()
{
    m_face.blinkTimer.start(kBlinkMs);
    m_alarmRunning = true;
    if (m_alarmEnabled) {
        emit alarmAlert(true);
    }
}

void DigitalWithProgress::stopAlarm()
{
    m_face.blinkTimer.stop();
    if (m_face.caption) {
        Looks::apply(m_face.caption, Looks::kCaptionDark);
    }
    if (m_alarmEnabled) {
        emit alarmAlert(false);
    }
}

void DigitalWithProgress::mousePressEvent(QMouseEvent*)
{
    if (m_alarmRunning) {
        stopAlarm();
    }
}

void DigitalWithProgress::blinkTimerExpired()
{
    if (isInitialised()) {
        m_face.blink();
        update();
    }
}

void DigitalWithProgress::showEvent(QShowEvent*) {}
