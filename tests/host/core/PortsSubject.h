// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/DeviceTypeInfo.h"
#include "norvo/SourceDevice.h"

#include <QPair>
#include <QVector>

/// Takes every definition but "bad" and the option "keep" beside it; notes what comes in.
class PortsSubject : public SourceDevice
{
    Q_OBJECT

public:
    PortsSubject() { addParam("command", ""); }

    static DeviceTypeInfo typeInfo() { return {}; }

    using PortsDevice::isHeard;
    using PortsDevice::sendBool;
    using PortsDevice::sendNumber;
    using PortsDevice::sendText;
    using PortsDevice::textOf;
    using SourceDevice::isConnected;
    using SourceDevice::reportFault;
    using SourceDevice::setConnected;

    QStringList outputs; ///< "0 name definition", in the order of their numbers.
    QStringList inputs;
    QVector<QPair<int, QVariant>> received;
    bool deletesItself = false;

signals:
    void ready();

public slots:
    void restart() {}

protected:
    QString defineOutput(int output, const QString& name, const PortDefinition& definition) override
    {
        return define(outputs, output, name, definition);
    }
    QString defineInput(int input, const QString& name, const PortDefinition& definition) override
    {
        return define(inputs, input, name, definition);
    }
    void receive(int input, const QVariant& value) override
    {
        received.append({input, value});
        if (deletesItself) {
            delete this;
        }
    }

private:
    static QString define(QStringList& list, int number, const QString& name,
                          const PortDefinition& definition)
    {
        const QString error = definition.text.startsWith("bad")
                                  ? QString("\"%1\" is bad").arg(definition.text)
                                  : unknownOption(definition, {"keep"});
        if (error.isEmpty()) {
            list.append(QString("%1 %2 %3").arg(number).arg(name, definition.text));
        }
        return error;
    }
};
