// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/core/PortsEnds.h"
#include "plugins/logic/CalcDevice.h"

#include <QtTest>

/// A calculation with a sender at an input and a listener at an output.
struct Calculation
{
    Calculation() { device.setObjectName("sum"); }

    /// Names and definitions, in turns; all in order.
    void addInputs(const QStringList& inputs)
    {
        for (int i = 0; i + 1 < inputs.size(); i += 2) {
            QCOMPARE(device.addInput(inputs[i], inputs[i + 1]), QString());
        }
    }
    void addOutput(const QString& expression, const QString& name = "y")
    {
        QCOMPARE(device.addOutput(name, expression), QString());
    }
    void start()
    {
        QVERIFY(device.initialise());
        device.setRunning(true);
        device.postInitialisation();
    }
    /// One output `y` of one input `x` without a start value, running and heard.
    void startWith(const QString& expression)
    {
        addInputs({"x", ""});
        addOutput(expression);
        listener.listenTo(device, "y");
        sender.sendTo(device, "x");
        start();
    }

    CalcDevice device;
    Listener listener;
    Sender sender;
    QSignalSpy alerts{&device, &BaseDevice::alertRaised};
};
