// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/core/PortsEnds.h"
#include "plugins/mqtt/MqttDevice.h"

#include <QtTest>

#include <memory>
#include <vector>

/// An MQTT device whose outputs are heard and noted, in order; it begins with start().
struct MqttSubject
{
    explicit MqttSubject(const QString& address)
    {
        device.setObjectName("broker");
        device.setParam("broker", address);
        QObject::connect(&device, &MqttDevice::connected,
                         [this](bool on) { notes << (on ? "connected" : "away"); });
        QObject::connect(&device, &MqttDevice::stale,
                         [this](bool on) { notes << (on ? "stale" : "fresh"); });
        QObject::connect(&device, &MqttDevice::recovered,
                         [this](const QString& text) { notes << text; });
        QObject::connect(&device, &MqttDevice::fault,
                         [this](const QString& text) { faults << text; });
        QObject::connect(&device, &MqttDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
    }
    ~MqttSubject() { stop(); }

    void addOutput(const QString& name, const PortDefinition& definition)
    {
        QCOMPARE(device.addOutput(name, definition), QString());
        outputs.append(name);
    }
    void addInput(const QString& name, const PortDefinition& definition)
    {
        QCOMPARE(device.addInput(name, definition), QString());
    }
    void start()
    {
        while (!outputs.isEmpty()) {
            listenTo(outputs.takeFirst());
        }
        QVERIFY(device.initialise());
        device.setRunning(true);
        device.postInitialisation();
    }
    void startAndConnect()
    {
        start();
        QTRY_VERIFY2_WITH_TIMEOUT(notes.contains("connected"), qPrintable(faults.join('\n')),
                                  30000);
        notes.clear();
    }
    void stop()
    {
        device.setRunning(false);
        device.preShutdown();
        device.deinitialise();
    }
    template <class Value>
    void send(const QString& input, const char* form, const Value& value)
    {
        QString signature;
        QObject* const receiver = device.getReceiver(input + form, signature);
        QVERIFY(receiver);
        QVERIFY(
            QMetaObject::invokeMethod(receiver, input.toUtf8().constData(),
                                      QArgument<Value>(QByteArray(form).mid(1).chopped(1), value)));
    }
    void pulse(const QString& input)
    {
        QString signature;
        QObject* const receiver = device.getReceiver(input + "()", signature);
        QVERIFY(receiver && QMetaObject::invokeMethod(receiver, input.toUtf8().constData()));
    }
    void listenTo(const QString& name)
    {
        listeners.push_back(std::make_unique<Listener>());
        Listener* const listener = listeners.back().get();
        listener->onNote = [this, name, listener] { notes << name + ' ' + listener->notes.last(); };
        listener->listenTo(device, name);
    }

    MqttDevice device;
    QStringList outputs;                              ///< That are not listened to yet.
    std::vector<std::unique_ptr<Listener>> listeners; ///< One for each output.
    QStringList notes;
    QStringList faults;
    QStringList alerts;
};
