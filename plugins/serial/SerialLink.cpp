// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/SerialLink.h"

#include <QFileInfo>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr auto kMaxRetryDelay = 2000ms;
constexpr auto kWatchInterval = 500ms;
constexpr qint64 kReadBufferBytes = 65536;
constexpr qint64 kMaxWaiting = 65536;

/// What QSerialPort says too little of.
QString reasonOf(const QSerialPort& port, const QString& path)
{
    switch (port.error()) {
    case QSerialPort::DeviceNotFoundError:
        return QString("there is no port %1").arg(path);
    case QSerialPort::UnsupportedOperationError:
        return QString("%1 is no serial port").arg(path);
    case QSerialPort::PermissionError:
        return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), R_OK | W_OK,
                           AT_EACCESS) == 0
                   ? QString("%1 is in use by another program or device").arg(path)
                   : QString("no permission to use %1; its group, often \"dialout\", may")
                         .arg(path);
    default:
        return QString("cannot open %1: %2").arg(path, port.errorString());
    }
}

} // namespace

SerialLink::SerialLink(const PortName& name, const SerialSettings& settings)
    : m_name(name), m_settings(settings), m_delay(kMaxRetryDelay)
{
    m_retryTimer.setSingleShot(true);
    connect(&m_retryTimer, &QTimer::timeout, this, &SerialLink::open);
    m_watchTimer.setInterval(kWatchInterval);
    connect(&m_watchTimer, &QTimer::timeout, this, &SerialLink::watch);
}

SerialLink::~SerialLink()
{
    if (m_port) {
        m_port->disconnect(this);
        // The system would wait for it, up to half a minute. Not without need: of a pseudo
        // terminal this drops what is on its way to the other end, too.
        if (unwritten() > 0) {
            m_port->clear();
        }
    }
}

void SerialLink::start()
{
    open();
}

void SerialLink::open()
{
    QString reason;
    m_path = m_name.find(reason);
    auto port = std::make_unique<QSerialPort>();
    if (!m_path.isEmpty()) {
        // By its own name, so that it is locked whatever link leads to it.
        m_openPath = QFileInfo(m_path).canonicalFilePath();
        port->setPortName(m_openPath);
        port->setReadBufferSize(kReadBufferBytes);
        reason =
            port->open(QIODevice::ReadWrite) ? m_settings.applyTo(*port) : reasonOf(*port, m_path);
    }
    if (reason.isEmpty()) {
        onOpened(std::move(port));
        return;
    }
    retry(0ms);
    if (reason != m_lastFailure) {
        m_lastFailure = reason;
        emit failed(reason);
    }
}

void SerialLink::onOpened(std::unique_ptr<QSerialPort> port)
{
    m_port = std::move(port);
    m_port->clear(QSerialPort::Input); // What came while nobody listened is old.
    connect(m_port.get(), &QSerialPort::readyRead, this, &SerialLink::readyRead);
    connect(m_port.get(), &QSerialPort::errorOccurred, this,
            [this](QSerialPort::SerialPortError error) {
                if (error != QSerialPort::NoError && error != QSerialPort::TimeoutError) {
                    lose(QString("%1 is gone: %2").arg(m_path, m_port->errorString()));
                }
            });
    m_lastFailure.clear();
    m_run.start();
    m_watchTimer.start();
    emit opened();
}

/// Not every port that goes makes its file descriptor fail.
void SerialLink::watch()
{
    if (QFileInfo(m_path).canonicalFilePath() != m_openPath) {
        lose(QString("%1 is gone").arg(m_path));
    }
}

void SerialLink::lose(const QString& reason)
{
    m_watchTimer.stop();
    m_port->disconnect(this);
    m_port->clear(); // What it still has to write must not arrive.
    m_port->setParent(this);
    m_port.release()->deleteLater(); // It may have called us.
    retry(std::chrono::milliseconds(m_run.elapsed()));
    emit lost(reason);
}

void SerialLink::retry(std::chrono::milliseconds lastRun)
{
    m_retryTimer.start(m_delay.nextJittered(lastRun));
}

QByteArray SerialLink::read(qint64 maxSize)
{
    return m_port ? m_port->read(maxSize) : QByteArray();
}

bool SerialLink::hasUnread() const
{
    int waiting = 0;
    return m_port && (m_port->bytesAvailable() > 0 ||
                      (::ioctl(m_port->handle(), FIONREAD, &waiting) == 0 && waiting > 0));
}

bool SerialLink::write(const QByteArray& bytes)
{
    return m_port && m_port->bytesToWrite() + bytes.size() <= kMaxWaiting &&
           m_port->write(bytes) == bytes.size();
}

void SerialLink::forgetWrites()
{
    if (m_port) {
        m_port->clear(QSerialPort::Output);
    }
}

void SerialLink::finishWrites(std::chrono::milliseconds limit)
{
    if (!m_port) {
        return;
    }
    m_port->disconnect(this); // To QSerialPort a port that takes nothing now has failed.
    QElapsedTimer clock;
    clock.start();
    for (bool isLeft = true; isLeft && !clock.hasExpired(limit.count());) {
        m_port->flush();
        isLeft = unwritten() > 0;
        ::usleep(isLeft ? 2000 : 0);
    }
}

qint64 SerialLink::unwritten() const
{
    int waiting = 0;
    ::ioctl(m_port->handle(), TIOCOUTQ, &waiting);
    return waiting + m_port->bytesToWrite();
}

} // namespace norvo
