#include "widgets/DigitalWithProgress.h"

#include "devices/Decimals.h"
#include "devices/OutputWithProgress.h"
#include "widgets/InnerControl.h"
#include "widgets/ReadoutStyle.h"

#include <QLabel>
#include <QProgressBar>

namespace Looks = norvo::Looks;

namespace {

constexpr int kBarSteps = 1000;
constexpr int kBarHeight = 25;
constexpr int kBlinkMs = 300;

/// Cut toward zero. A number that no int can hold becomes one far below any bar.
int truncated(double number)
{
    constexpr int lowest = std::numeric_limits<int>::min();
    return std::fabs(number) <= std::numeric_limits<int>::max() ? int(number) : lowest;
}

int clampedStep(double position)
{
    if (position > kBarSteps) {
        return kBarSteps;
    }
    return position > 0 ? int(position) : 0;
}

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
    : BaseWidget(device, parent), m_withProgress(withProgress)
{}

void DigitalWithProgress::initialise()
{
    auto* const readout = compatibleDevice<OutputWithProgress>(device(), *this);
    if (!readout) {
        return;
    }
    connect(readout, SIGNAL(output(double)), this, SLOT(input(double)));
    connect(readout, SIGNAL(timeoutAlert()), this, SLOT(timeout()));
    connect(&m_blinkTimer, SIGNAL(timeout()), this, SLOT(blinkTimerExpired()));

    copyParameters(*readout);
    createLabels(readout->getName());
    if (m_withProgress) {
        createBar();
    }
    setFontSize(60, 16, 12);
    setLayout(Qt::Horizontal);
    timeout();
    mousePressEvent(nullptr);
    m_outOfRange = false;
    m_alarmRunning = true; // though quiet: the first value ends it
    m_timedOut = true;
    setInitialised(true);
}

void DigitalWithProgress::copyParameters(const OutputWithProgress& readout)
{
    m_minValue = readout.getMinValue();
    m_maxValue = readout.getMaxValue();
    m_minThreshold = readout.getMinThreshold();
    m_maxThreshold = readout.getMaxThreshold();
    m_precision = norvo::decimals(readout.getPrecision());
    m_alarmEnabled = readout.getAlarmEnabled();
    m_lastValue = 0;
}

void DigitalWithProgress::createLabels(const QString& caption)
{
    m_value = new QLabel(QString::number(0.0, 'f', m_precision));
    m_value->setStyleSheet(Looks::kInRange.digits);
    m_value->setAlignment(Qt::AlignCenter);

    m_caption = new QLabel(caption);
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void DigitalWithProgress::createBar()
{
    m_minLabel = new QLabel(QString::number(m_minValue, 'g', 6));
    m_maxLabel = new QLabel(QString::number(m_maxValue, 'g', 6));
    m_bar = new QProgressBar;
    m_bar->setRange(0, kBarSteps);
    m_bar->setValue(truncated(barPosition(m_lastValue)));
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
    m_value->setFont(Looks::digitsFont(valueSize));
    m_caption->setFont(Looks::captionFont(captionSize));
    if (m_withProgress) {
        m_minLabel->setFont(Looks::captionFont(scaleLabelSize));
        m_maxLabel->setFont(Looks::captionFont(scaleLabelSize));
    }
    const QString room = m_minValue < 0 ? "33" : "3"; // one more for the sign
    const QString sample =
        ReadoutStyle::widthSample(ReadoutStyle::roundedMagnitude(m_maxValue, m_minValue),
                                  m_precision) +
        room;
    const int width = m_value->fontMetrics().horizontalAdvance(sample);
    m_value->setMinimumWidth(width);
    setMinimumWidth(width);
    m_value->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void DigitalWithProgress::setLayout(Qt::Orientation orientation)
{
    if (!m_value) {
        return;
    }
    if (m_bar) {
        m_bar->setOrientation(orientation);
    }
    QGridLayout* const grid = getLayout();
    if (orientation == Qt::Vertical) {
        grid->addWidget(m_value, 0, 0, Qt::AlignTop);
        if (m_bar) {
            grid->addWidget(m_bar, 0, 1, 2, 1);
            grid->addWidget(m_maxLabel, 0, 2, Qt::AlignTop);
            grid->addWidget(m_minLabel, 1, 2, Qt::AlignBottom);
        }
        return;
    }
    grid->addWidget(m_caption, 0, 0, 1, 2, Qt::AlignBottom);
    grid->addWidget(m_value, 1, 0, 1, 2, Qt::AlignTop);
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
    if (!m_value) {
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
    m_caption->setEnabled(active);
    update();
}

void DigitalWithProgress::showState(const Looks::Readout& look)
{
    Looks::apply(m_value, look.digits);
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

    m_lastValue = value;
    m_value->setText(QString::number(value, 'f', m_precision));
    m_outOfRange = m_minThreshold > value || value > m_maxThreshold;
    showState(m_outOfRange ? Looks::kOutOfRange : Looks::kInRange);
    checkForAlarm();

    if (m_bar) {
        moveBar(m_bar, clampedStep(barPosition(value)));
    }
    setActive(true);
    update();
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
    m_blinkTimer.start(kBlinkMs);
    m_alarmRunning = true;
    if (m_alarmEnabled) {
        emit alarmAlert(true);
    }
}

void DigitalWithProgress::stopAlarm()
{
    m_blinkTimer.stop();
    if (m_caption) {
        Looks::apply(m_caption, Looks::kCaptionDark);
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
        ReadoutStyle::blink(m_blinkTimer, m_caption);
        update();
    }
}

void DigitalWithProgress::showEvent(QShowEvent*) {}
