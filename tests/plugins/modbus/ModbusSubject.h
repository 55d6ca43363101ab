// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/core/PortsEnds.h"
#include "plugins/modbus/ModbusDevice.h"

#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <csignal>
#include <functional>
#include <memory>
#include <vector>

constexpr int kPatience = 15000; ///< ms; a machine under load starts a script slowly.

inline quint16 freePort()
{
    QTcpServer server;
    return server.listen(QHostAddress::LocalHost) ? server.serverPort() : quint16(0);
}

/// server.py beside this file, which serves unit 7.
class PymodbusServer
{
public:
    explicit PymodbusServer(const QString& framing = "tcp") : m_framing(framing) {}
    ~PymodbusServer() { stop(); }

    void start()
    {
        m_lines.clear();
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start("/usr/bin/python3", {NORVO_SOURCE_DIR "/tests/plugins/modbus/server.py",
                                             m_framing, QString::number(port)});
        QTRY_VERIFY_WITH_TIMEOUT(lines().contains("ready"), kPatience);
    }
    void stop()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    void hang() { ::kill(pid_t(m_process.processId()), SIGSTOP); }
    void goOn() { ::kill(pid_t(m_process.processId()), SIGCONT); }
    /// "h 100 215 7": sets values of a table.
    void set(const QByteArray& line)
    {
        const auto before = lines().count("set");
        m_process.write(line + '\n');
        QTRY_COMPARE_WITH_TIMEOUT(lines().count("set"), before + 1, kPatience);
    }
    /// What it has noted.
    QStringList lines()
    {
        m_lines += QString::fromUtf8(m_process.readAllStandardOutput());
        return m_lines.left(m_lines.lastIndexOf('\n') + 1).split('\n', Qt::SkipEmptyParts);
    }
    QStringList writes() { return lines().filter(QRegularExpression("^write")); }

    const quint16 port = freePort();

private:
    const QString m_framing;
    QProcess m_process;
    QString m_lines;
};

/// A server whose answers the test makes up: it gets each request with its head of 7 bytes.
class MadeUpServer
{
public:
    using Answer = std::function<void(QTcpSocket& socket, const QByteArray& request)>;

    explicit MadeUpServer(Answer answer) : m_answer(std::move(answer))
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
                ++connections;
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                    while (socket->bytesAvailable() >= 12) { // Reads and single writes.
                        requests.append(socket->read(12));
                        m_answer(*socket, requests.last());
                    }
                });
            }
        });
    }

    /// A regular answer: one bit or register with that value, or a write repeated.
    static QByteArray answerTo(const QByteArray& request, int value = 0)
    {
        const bool isRead = request[7] < 5;
        const QByteArray word = QByteArray(1, char(value >> 8)) + char(value);
        const QByteArray values = request[7] < 3 ? word.right(1) : word;
        const QByteArray pdu =
            isRead ? request.mid(7, 1) + char(values.size()) + values : request.mid(7);
        return request.left(5) + char(pdu.size() + 1) + request.mid(6, 1) + pdu;
    }
    quint16 port() const { return m_server.serverPort(); }

    int connections = 0;
    QList<QByteArray> requests;

private:
    Answer m_answer;
    QTcpServer m_server;
};

/// A modbus device whose outputs are heard and noted; it starts with start().
struct ModbusSubject
{
    explicit ModbusSubject(const QString& target)
    {
        device.setObjectName("plc");
        device.setParam("target", target);
        device.setParam("unit", "7");
        device.setParam("poll", "20");
        device.setParam("timeout", "10000");
        QObject::connect(&device, &ModbusDevice::connected,
                         [this](bool on) { notes << (on ? "connected" : "away"); });
        QObject::connect(&device, &ModbusDevice::fault,
                         [this](const QString& text) { faults << text; });
        QObject::connect(&device, &ModbusDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
    }
    explicit ModbusSubject(quint16 port) : ModbusSubject(QString("tcp://127.0.0.1:%1").arg(port)) {}
    ~ModbusSubject() { stop(); }

    void addOutput(const QString& name, const PortDefinition& definition, bool isHeard = true)
    {
        QCOMPARE(device.addOutput(name, definition), QString());
        if (isHeard) {
            heard.append(name);
        }
    }
    void addInput(const QString& name, const PortDefinition& definition)
    {
        QCOMPARE(device.addInput(name, definition), QString());
    }
    void start()
    {
        for (const QString& name : heard) {
            listeners.push_back(std::make_unique<Listener>());
            Listener* const listener = listeners.back().get();
            listener->onNote = [this, name, listener] {
                notes << name + ' ' + listener->notes.last();
            };
            listener->listenTo(device, name);
        }
        QVERIFY(device.initialise());
        device.setRunning(true);
        device.postInitialisation();
    }
    void stop()
    {
        device.setRunning(false);
        device.preShutdown();
        device.deinitialise();
    }
    bool isThere() const { return notes.lastIndexOf("connected") > notes.lastIndexOf("away"); }
    template <class Value>
    void send(const QString& input, const Value& value)
    {
        Sender sender;
        sender.sendTo(device, input);
        emit sender.value(value);
    }
    void pulse(const QString& input)
    {
        Sender sender;
        sender.sendTo(device, input);
        emit sender.value();
    }
    /// The number that left last; NaN: none.
    double last(const QString& output) const
    {
        const QStringList numbers = notes.filter(QRegularExpression('^' + output + " number "));
        return numbers.isEmpty() ? qQNaN() : numbers.last().section(' ', 2).toDouble();
    }

    ModbusDevice device;
    QStringList heard;
    std::vector<std::unique_ptr<Listener>> listeners;
    QStringList notes;
    QStringList faults;
    QStringList alerts;
};
