// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/TimerDevice.h"

#include "norvo/Categories.h"
#include "norvo/Readings.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace {

const QString kMode = QStringLiteral("mode");
const QString kTime = QStringLiteral("time");
const QString kAutostart = QStringLiteral("autostart");
const QStringList kModes{"ticks", "delay", "on-delay", "off-delay", "pulse"}; ///< As Mode.

constexpr int kMinTimeMs = 1;
constexpr std::size_t kMaxWaiting = 10000;

} // namespace

TimerDevice::TimerDevice()
{
    addParam(kMode, kModes);
    addParam(kTime, "1000");
    getParam(kTime).setUnit("ms");
    addParam(kAutostart, "true", {}, true, {{kMode, {kModes.constFirst()}}});
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &TimerDevice::onTimeout);
}

DeviceTypeInfo TimerDevice::typeInfo()
{
    return {"Timer", "Ticks, and delays of values", {norvo::kCategoryLogic}};
}

bool TimerDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    m_mode = Mode(std::max(0, kModes.indexOf(getParam(kMode))));
    m_timeMs = std::max(kMinTimeMs, int(getParam(kTime)));
    m_level = false;
    m_output = false;
    m_clock.start();
    return true;
}

void TimerDevice::postInitialisation()
{
    if (getParam(kAutostart)) {
        start();
    }
}

void TimerDevice::preShutdown()
{
    m_timer.stop();
    m_waiting.clear();
}

void TimerDevice::start()
{
    if (isRunning() && m_mode == Mode::Ticks) {
        m_level = true;
        m_lastTick = 0;
        m_clock.start();
        m_timer.start(m_timeMs);
    }
}

void TimerDevice::stop()
{
    if (isRunning()) {
        m_timer.stop();
        m_waiting.clear();
        m_level = false;
        setOutput(false);
    }
}

void TimerDevice::input()
{
    if (m_mode == Mode::Delay) {
        delay(QVariant());
    } else if (m_mode == Mode::Ticks) {
        start();
    } else {
        const QPointer<TimerDevice> self(this);
        setLevel(true);
        if (self) {
            setLevel(false);
        }
    }
}

void TimerDevice::input(double value)
{
    m_mode == Mode::Delay ? delay(value) : setLevel(value != 0 && !std::isnan(value));
}

void TimerDevice::input(QString text)
{
    if (m_mode == Mode::Delay) {
        delay(text);
    } else if (const auto yes = norvo::readBool(text)) {
        setLevel(*yes);
    } else if (const auto number = norvo::readDouble(text)) {
        input(*number);
    }
}

void TimerDevice::input(bool on)
{
    m_mode == Mode::Delay ? delay(on) : setLevel(on);
}

void TimerDevice::delay(const QVariant& value)
{
    if (!isRunning()) {
        return;
    }
    if (m_waiting.size() < kMaxWaiting) {
        m_waiting.push_back({m_clock.elapsed() + m_timeMs, value});
        if (!m_timer.isActive()) {
            wakeAt(m_waiting.front().dueMs);
        }
    } else if (!m_hasRefused) {
        m_hasRefused = true;
        alert(QString("more than %1 values wait; those that come now are lost").arg(kMaxWaiting));
    }
}

/// What the timers of a programmable controller do, known there as TON, TOF and TP.
void TimerDevice::setLevel(bool on)
{
    if (!isRunning()) {
        return;
    }
    const bool isNews = m_level != on;
    m_level = on;
    switch (m_mode) {
    case Mode::Ticks:
        if (isNews) {
            on ? start() : stop();
        }
        break;
    case Mode::OnDelay:
        if (!on) {
            m_timer.stop();
            setOutput(false);
        } else if (isNews) {
            m_timer.start(m_timeMs);
        }
        break;
    case Mode::OffDelay:
        if (on) {
            m_timer.stop();
            setOutput(true);
        } else if (isNews) {
            m_timer.start(m_timeMs);
        }
        break;
    case Mode::Pulse:
        if (on && isNews && !m_output) {
            m_timer.start(m_timeMs);
            setOutput(true);
        }
        break;
    case Mode::Delay:
        break;
    }
}

void TimerDevice::setOutput(bool on)
{
    if (m_output != on) {
        m_output = on;
        emit output(on);
    }
}

void TimerDevice::onTimeout()
{
    if (m_mode == Mode::Ticks) {
        sendTick();
    } else if (m_mode == Mode::Delay) {
        sendDue();
    } else {
        setOutput(m_mode == Mode::OnDelay);
    }
}

void TimerDevice::sendTick()
{
    const qint64 number = m_clock.elapsed() / m_timeMs;
    const bool isDue = number > m_lastTick;
    m_lastTick = number;
    wakeAt((number + 1) * m_timeMs);
    if (isDue) {
        const QPointer<TimerDevice> self(this);
        emit tick();
        if (self && isRunning() && m_timer.isActive()) {
            emit output(double(number));
        }
    }
}

void TimerDevice::sendDue()
{
    const QPointer<TimerDevice> self(this);
    const qint64 nowMs = m_clock.elapsed();
    while (self && !m_waiting.empty() && m_waiting.front().dueMs <= nowMs) {
        const QVariant value = m_waiting.front().value;
        m_waiting.pop_front();
        send(value);
    }
    if (self && !m_waiting.empty()) {
        wakeAt(m_waiting.front().dueMs);
    } else if (self) {
        m_hasRefused = false;
    }
}

void TimerDevice::send(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Double:
        emit output(value.toDouble());
        break;
    case QMetaType::Bool:
        emit output(value.toBool());
        break;
    case QMetaType::QString:
        emit output(value.toString());
        break;
    default:
        emit tick();
    }
}

void TimerDevice::wakeAt(qint64 timeMs)
{
    m_timer.start(int(std::max(qint64(0), timeMs - m_clock.elapsed())));
}
