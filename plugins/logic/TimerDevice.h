// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/DeviceTypeInfo.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QVariant>

#include <deque>

/// Ticks, and delays of values and of a yes or no.
///
/// All times are of a clock that nobody sets. A tick that comes late does not make the next one
/// late, and ticks for which it was too late altogether are left out.
class TimerDevice : public BaseDevice
{
    Q_OBJECT

public:
    TimerDevice();

    static DeviceTypeInfo typeInfo();

    bool initialise() override;
    void postInitialisation() override;
    void preShutdown() override; ///< What waits is dropped.

signals:
    void tick();               ///< Also a pulse that was delayed.
    void output(double value); ///< With a tick: its number since the start, from 1.
    void output(QString text);
    void output(bool on);

public slots:
    void input(); ///< A pulse. Ignored, as are all of them, unless the device is running.
    void input(double value);
    void input(QString text);
    void input(bool on);
    void start(); ///< Ticks begin again with number 1.
    void stop();  ///< Ends the ticks, drops what waits, takes a yes back.

private:
    enum class Mode { Ticks, Delay, OnDelay, OffDelay, Pulse };
    struct Waiting
    {
        qint64 dueMs;   ///< By m_clock.
        QVariant value; ///< Invalid: a pulse.
    };

    void delay(const QVariant& value);
    void setLevel(bool on);
    void setOutput(bool on);
    void onTimeout();
    void sendTick();
    void sendDue();
    void send(const QVariant& value);
    void wakeAt(qint64 timeMs);

    Mode m_mode = Mode::Ticks;
    int m_timeMs = 0;
    bool m_level = false;  ///< The last yes or no that came in.
    bool m_output = false; ///< The last one that left.
    qint64 m_lastTick = 0; ///< Its number.
    std::deque<Waiting> m_waiting;
    bool m_hasRefused = false; ///< Since nothing waited.
    QElapsedTimer m_clock;
    QTimer m_timer;
};
