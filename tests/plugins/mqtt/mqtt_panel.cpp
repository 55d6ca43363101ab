// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/mqtt/MqttDevice.h"

#include <QCoreApplication>

/// Stands in for a panel that is killed: mqtt_panel ADDRESS STATUS-TOPIC.
int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    MqttDevice device;
    device.setParam("broker", application.arguments().value(1));
    device.setParam("status", application.arguments().value(2));
    if (!device.initialise()) {
        return 1;
    }
    device.setRunning(true);
    device.postInitialisation();
    return QCoreApplication::exec();
}
