// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/process/ProcessDevice.h"

#include <QFile>
#include <QStringList>

/// A process device that has been started and notes what it emits, in order.
struct ProcessSubject
{
    explicit ProcessSubject(const QString& command, const QString& restart = "never")
    {
        device.setObjectName("child");
        device.setParam("command", command);
        device.setParam("restart", restart);
        QObject::connect(&device, qOverload<QString>(&ProcessDevice::output),
                         [this](const QString& line) {
                             lines << line;
                             notes << "text " + line;
                         });
        QObject::connect(&device, qOverload<double>(&ProcessDevice::output),
                         [this](double number) { notes << "number " + QString::number(number); });
        QObject::connect(&device, &ProcessDevice::running,
                         [this](bool on) { notes << (on ? "up" : "down"); });
        QObject::connect(&device, &ProcessDevice::finished,
                         [this](int code) { notes << "finished " + QString::number(code); });
        QObject::connect(&device, &ProcessDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
        initialised = device.initialise();
        device.setRunning(initialised);
        if (initialised) {
            device.postInitialisation();
        }
    }

    /// As the panel does it.
    void stop()
    {
        device.setRunning(false);
        device.preShutdown();
        device.deinitialise();
    }

    bool hasFinished() const { return !notes.isEmpty() && notes.last().startsWith("finished"); }

    ProcessDevice device;
    bool initialised = false;
    QStringList lines;
    QStringList notes;
    QStringList alerts;
};

/// Whether there is such a process that has not ended; one that only waits to be reaped has.
inline bool isAlive(const QString& pid)
{
    QFile file("/proc/" + pid + "/stat");
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray stat = file.readAll();
    const QByteArray state = stat.mid(stat.lastIndexOf(')') + 2, 1);
    return !state.isEmpty() && state != "Z" && state != "X";
}
