// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DeviceTypeInfo.h"
#include "norvo/SourceDevice.h"

/// A connection that is lost and comes back as a test has it.
class Link : public SourceDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }
    using SourceDevice::reportFault;
    using SourceDevice::setConnected;

protected:
    QString defineOutput(int, const QString&, const PortDefinition&) override { return {}; }
    QString defineInput(int, const QString&, const PortDefinition&) override { return {}; }
    void receive(int, const QVariant&) override {}

signals:
    void output(double value);

public slots:
    void input(double /*value*/) {}
};
