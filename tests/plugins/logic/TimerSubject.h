// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/logic/TimerDevice.h"

#include <QStringList>

#include <functional>

constexpr int kLongMs = 600000; ///< That no test waits for.

class TimerNotes : public QObject
{
public:
    explicit TimerNotes(TimerDevice& device)
    {
        connect(&device, &TimerDevice::tick, this, [this] { add("tick"); });
        connect(&device, qOverload<double>(&TimerDevice::output), this,
                [this](double value) { add("number " + QString::number(value)); });
        connect(&device, qOverload<QString>(&TimerDevice::output), this,
                [this](const QString& text) { add("text " + text); });
        connect(&device, qOverload<bool>(&TimerDevice::output), this,
                [this](bool on) { add(on ? "yes" : "no"); });
    }

    QStringList take()
    {
        QStringList notes;
        notes.swap(m_notes);
        return notes;
    }
    QStringList all() const { return m_notes; }

    std::function<void()> onNote;

private:
    void add(const QString& note)
    {
        m_notes.append(note);
        if (onNote) {
            onNote();
        }
    }

    QStringList m_notes;
};

struct TimerSubject
{
    TimerSubject(const QString& mode, int timeMs, const QString& autostart = "true")
    {
        device.setParam("mode", mode);
        device.setParam("time", QString::number(timeMs));
        device.setParam("autostart", autostart);
        start();
    }

    void start()
    {
        device.setRunning(device.initialise());
        device.postInitialisation();
    }
    void end()
    {
        device.setRunning(false);
        device.preShutdown();
    }

    TimerDevice device;
    TimerNotes notes{device};
};
