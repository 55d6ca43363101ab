// SPDX-License-Identifier: GPL-3.0-or-later

// Runs the command that it is given as a panel would, and passes its lines on.

#include "plugins/sources/process/ProcessDevice.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    ProcessDevice device;
    device.setParam("command", application.arguments().value(1));
    QObject::connect(&device, qOverload<QString>(&ProcessDevice::output), [](const QString& line) {
        std::puts(qPrintable(line));
        std::fflush(stdout);
    });
    if (!device.initialise()) {
        return 1;
    }
    device.setRunning(true);
    device.postInitialisation();
    return QCoreApplication::exec();
}
