// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/core/PortsEnds.h"
#include "plugins/websocket/WebSocketDevice.h"

#include <QtTest>

#include <memory>
#include <vector>

/// A WebSocket device whose outputs are heard and noted, in order; it begins with start().
struct WebSocketSubject
{
    explicit WebSocketSubject(const QString& url)
    {
        device.setObjectName("server");
        device.setParam("url", url);
        QObject::connect(&device, &WebSocketDevice::connected,
                         [this](bool on) { notes << (on ? "connected" : "away"); });
        QObject::connect(&device, &WebSocketDevice::fault,
                         [this](const QString& text) { faults << text; });
        QObject::connect(&device, &WebSocketDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
    }
    ~WebSocketSubject() { stop(); }

    void addOutput(const QString& name, const PortDefinition& definition, bool isHeard = true)
    {
        QCOMPARE(device.addOutput(name, definition), QString());
        if (isHeard) {
            heardOutputs << name;
        }
    }
    void addInput(const QString& name, const PortDefinition& definition)
    {
        QCOMPARE(device.addInput(name, definition), QString());
    }
    void start()
    {
        while (!heardOutputs.isEmpty()) {
            listenTo(heardOutputs.takeFirst());
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
        listener->onNote = [this, name, listener] {
            notes << name + ' ' + listener->notes.takeLast();
        };
        listener->listenTo(device, name);
    }

    WebSocketDevice device;
    QStringList heardOutputs;                         ///< That are not listened to yet.
    std::vector<std::unique_ptr<Listener>> listeners; ///< One for each output that is heard.
    QStringList notes;
    QStringList faults;
    QStringList alerts;
};
