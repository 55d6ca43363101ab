// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Recorder.h"

#include "devices/GraphSettingsDevice.h"
#include "devices/OutputGraphDevice.h"

/// A time graph that runs, and the relays that feed it.
struct RunningGraph
{
    RunningGraph()
    {
        device.setObjectName("graph");
        device.setRunning(device.initialise());
    }

    void feedFrom(GraphSettingsDevice& relay, const QString& name)
    {
        relay.setObjectName(name);
        QObject::connect(&relay, SIGNAL(output(double)), &device, SLOT(input(double)));
        QObject::connect(&relay, SIGNAL(setName(QString)), &device, SLOT(setName(QString)));
        QObject::connect(&relay, SIGNAL(setColor(QString)), &device, SLOT(setColor(QString)));
        QObject::connect(&relay, SIGNAL(setFilled(bool)), &device, SLOT(setFilled(bool)));
    }

    QStringList resent()
    {
        Recorder recorder(&device);
        QMetaObject::invokeMethod(&device, "resendData");
        return recorder.take();
    }

    OutputGraphDevice device;
};
