// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/RetryDelay.h"
#include "plugins/websocket/MessageQueue.h"
#include "plugins/websocket/ServerSettings.h"

#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <QWebSocket>

#include <memory>
#include <utility>

namespace norvo {

/// The connection to a server, which comes back by itself.
///
/// A server that is silent is asked for a sign of life, and counts as away when none comes. What is
/// on its way when the connection ends never leaves the machine. No receiver of
/// its signals may end or delete it.
class ServerLink : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxMessage = 1024 * 1024;  ///< Bytes, in and out.
    static constexpr qint64 kMaxUnsent = 256 * 1024; ///< Bytes that the server has not taken.

    ServerLink();
    ~ServerLink() override;

    void start(const ServerSettings& settings);
    void stop(const QStringList& lastWords); ///< Emits nothing.

    bool isOpen() const { return m_isOpen; }
    /// Whether the server is behind with what it has been sent.
    bool isFull() const { return m_isOpen && m_socket->bytesToWrite() > kMaxUnsent; }
    void send(const QString& message);                         ///< Ignored unless it is open.
    MessageQueue& messages() { return m_messages; }            ///< Those that have come.
    qint64 takeBinary() { return std::exchange(m_binary, 0); } ///< Messages since the last call.

signals:
    void opened();
    void arrived(); ///< A message, which waits in the queue.
    void closed(const QString& why);

private:
    void connectToServer();
    void secure();
    void onOpened();
    void onError(QAbstractSocket::SocketError error);
    void onDisconnected();
    void checkSilence();
    void drop(const QString& why);
    void release();

    ServerSettings m_settings;
    std::unique_ptr<QWebSocket> m_socket;
    RetryDelay m_delay;
    QTimer m_retry;
    QTimer m_handshake; ///< Until it is open.
    QTimer m_silence;   ///< While it is open.
    QElapsedTimer m_run;
    MessageQueue m_messages;
    QString m_securityError;
    qint64 m_binary = 0;
    int m_silentChecks = 0;
    bool m_isOpen = false;
};

} // namespace norvo
