// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/core/PortsEnds.h"
#include "plugins/serial/SerialDevice.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <memory>
#include <vector>

#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

/// What there is to read now.
inline QByteArray readAll(int fd)
{
    std::array<char, 65536> block{};
    QByteArray bytes;
    ssize_t count = 0;
    while ((count = ::read(fd, block.data(), block.size())) > 0) {
        bytes.append(block.data(), int(count));
    }
    return bytes;
}

/// A pseudo terminal in the place of a port, with this end in the place of the device: it can be
/// unplugged and plugged in again.
class PseudoPort
{
public:
    PseudoPort() { plug(); }
    ~PseudoPort() { unplug(); }
    PseudoPort(const PseudoPort&) = delete;
    PseudoPort& operator=(const PseudoPort&) = delete;

    QString path() const { return m_folder.filePath("port"); }

    void plug()
    {
        m_end = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
        QVERIFY(m_end >= 0 && ::grantpt(m_end) == 0 && ::unlockpt(m_end) == 0);
        termios raw{}; // Else it echoes until the port is opened.
        QVERIFY(::tcgetattr(m_end, &raw) == 0);
        ::cfmakeraw(&raw);
        QVERIFY(::tcsetattr(m_end, TCSANOW, &raw) == 0);
        m_node = ::ptsname(m_end);
        QVERIFY(QFile::link(m_node, path()));
    }
    void unplug()
    {
        QFile::remove(path());
        hangUp();
    }
    /// The other end is gone, the name still there.
    void hangUp()
    {
        if (m_end >= 0) {
            ::close(m_end);
            m_end = -1;
        }
    }
    void hide() { QFile::remove(path()); } ///< The name is gone, the other end still there.

    void write(const QByteArray& bytes)
    {
        QCOMPARE(::write(m_end, bytes.constData(), size_t(bytes.size())), ssize_t(bytes.size()));
    }
    /// As much as finds room; returns how much.
    int writeSome(const QByteArray& bytes)
    {
        return int(qMax(ssize_t(0), ::write(m_end, bytes.constData(), size_t(bytes.size()))));
    }
    QByteArray read() { return readAll(m_end); } ///< What has been written to the port.
    QString node() const { return m_node; }

private:
    QTemporaryDir m_folder;
    QString m_node;
    int m_end = -1;
};

/// A serial device that notes what it emits, in order; it starts with start().
struct SerialSubject
{
    using Params = QMap<QString, QString>;

    explicit SerialSubject(const QString& port, const Params& params = {})
    {
        device.setObjectName("scale");
        device.setParam("port", port);
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            device.setParam(param.key(), param.value());
        }
        QObject::connect(&device, &SerialDevice::connected,
                         [this](bool on) { notes << (on ? "connected" : "away"); });
        QObject::connect(&device, qOverload<QString>(&SerialDevice::output),
                         [this](const QString& text) { notes << "text " + text; });
        QObject::connect(&device, qOverload<double>(&SerialDevice::output),
                         [this](double number) { notes << "number " + QString::number(number); });
        QObject::connect(&device, &SerialDevice::fault,
                         [this](const QString& text) { faults << text; });
        QObject::connect(&device, &SerialDevice::alertRaised,
                         [this](const QString& text) { alerts << text; });
        QObject::connect(&device, &SerialDevice::errorOccurred,
                         [this](const QString& text) { errors << text; });
    }
    ~SerialSubject() { stop(); }
    SerialSubject(const SerialSubject&) = delete;
    SerialSubject& operator=(const SerialSubject&) = delete;

    void start()
    {
        QVERIFY2(device.initialise(), qPrintable(errors.join(", ")));
        device.setRunning(true);
        device.postInitialisation();
    }
    /// The same until it is connected; that note is taken away.
    void startConnected()
    {
        start();
        QTRY_COMPARE(notes, QStringList("connected"));
        notes.clear();
    }
    void stop()
    {
        device.setRunning(false);
        device.preShutdown();
        device.deinitialise();
    }
    void listenTo(const QString& name)
    {
        listeners.push_back(std::make_unique<Listener>());
        Listener* const listener = listeners.back().get();
        listener->onNote = [this, name, listener] { notes << name + ' ' + listener->notes.last(); };
        listener->listenTo(device, name);
    }
    QStringList texts() const { return notes.filter("text "); }

    SerialDevice device;
    std::vector<std::unique_ptr<Listener>> listeners;
    QStringList notes;
    QStringList faults;
    QStringList alerts;
    QStringList errors;
};
