// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/RetryDelay.h"
#include "plugins/serial/PortName.h"
#include "plugins/serial/SerialSettings.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include <chrono>
#include <memory>

namespace norvo {

/// An open serial port: opens it, notices when it is gone, and opens it again when it is back, at
/// the latest about 2.5 s after. Blocks nowhere but where it says so.
class SerialLink : public QObject
{
    Q_OBJECT

public:
    SerialLink(const PortName& name, const SerialSettings& settings);
    ~SerialLink() override; ///< What has not been written is forgotten.

    void start();
    bool isOpen() const { return m_port != nullptr; }
    QByteArray read(qint64 maxSize);
    bool hasUnread() const; ///< Also what no event has told of yet.
    /// Sends all of the bytes or none: false when the port is away, or does not take them and 64
    /// KiB wait already.
    bool write(const QByteArray& bytes);
    void forgetWrites();
    /// Waits for it; nothing is emitted from then on.
    void finishWrites(std::chrono::milliseconds limit);

signals:
    void opened();
    void readyRead();
    void lost(const QString& reason);   ///< It was open.
    void failed(const QString& reason); ///< To open; once for each reason in a row.

private:
    void open();
    void onOpened(std::unique_ptr<QSerialPort> port);
    void watch();
    void lose(const QString& reason);
    void retry(std::chrono::milliseconds lastRun);
    qint64 unwritten() const; ///< Bytes, here and in the system.

    PortName m_name;
    SerialSettings m_settings;
    QString m_path;     ///< As it was found.
    QString m_openPath; ///< Where that led when it was opened.
    std::unique_ptr<QSerialPort> m_port;
    RetryDelay m_delay;
    QTimer m_retryTimer;
    QTimer m_watchTimer;
    QElapsedTimer m_run;
    QString m_lastFailure;
};

} // namespace norvo
