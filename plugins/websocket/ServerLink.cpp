// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/ServerLink.h"

#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QSslError>

#include <chrono>

#include <sys/socket.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr auto kMaxHandshake = 5s;
constexpr auto kMaxDelay = 10s;
constexpr qint64 kReadBuffer = ServerLink::kMaxMessage + 4096; ///< A frame is read as a whole.
constexpr int kChecks = 4; ///< Within the time that the server may be silent.

} // namespace

ServerLink::ServerLink() : m_delay(kMaxDelay)
{
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &ServerLink::connectToServer);
    m_handshake.setSingleShot(true);
    connect(&m_handshake, &QTimer::timeout, this,
            [this] { drop(QString("no answer within %1 s").arg(kMaxHandshake.count())); });
    connect(&m_silence, &QTimer::timeout, this, &ServerLink::checkSilence);
}

ServerLink::~ServerLink()
{
    release();
}

void ServerLink::start(const ServerSettings& settings)
{
    m_settings = settings;
    m_delay = RetryDelay(kMaxDelay);
    m_retry.start(0);
}

void ServerLink::stop(const QStringList& lastWords)
{
    m_retry.stop();
    if (m_isOpen) {
        for (const QString& word : lastWords) {
            m_socket->sendTextMessage(word);
        }
        m_socket->disconnect(this);
        m_socket->close(); // Sends what the kernel takes at once.
    }
    release();
}

void ServerLink::send(const QString& message)
{
    if (m_isOpen) {
        m_socket->sendTextMessage(message);
    }
}

void ServerLink::connectToServer()
{
    m_socket = std::make_unique<QWebSocket>();
    QWebSocket* const socket = m_socket.get();
    socket->setMaxAllowedIncomingFrameSize(kMaxMessage);
    socket->setMaxAllowedIncomingMessageSize(kMaxMessage);
    socket->setReadBufferSize(kReadBuffer);
    secure();
    connect(socket, &QWebSocket::connected, this, &ServerLink::onOpened);
    connect(socket, &QWebSocket::disconnected, this, &ServerLink::onDisconnected);
    connect(socket, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), this,
            &ServerLink::onError);
    connect(socket, &QWebSocket::pong, this, [this] { m_silentChecks = 0; });
    connect(socket, &QWebSocket::textMessageReceived, this, [this](const QString& message) {
        m_silentChecks = 0;
        m_messages.push(message.toUtf8());
        emit arrived();
    });
    connect(socket, &QWebSocket::binaryMessageReceived, this, [this] {
        m_silentChecks = 0;
        ++m_binary;
        emit arrived();
    });
    QNetworkRequest request(m_settings.url);
    for (const auto& [name, value] : qAsConst(m_settings.headers)) {
        request.setRawHeader(name, value);
    }
    m_handshake.start(kMaxHandshake);
    socket->open(request);
}

void ServerLink::secure()
{
    m_securityError.clear();
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    if (!m_settings.authorities.isEmpty()) {
        configuration.setCaCertificates(m_settings.authorities);
    }
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
    m_socket->setSslConfiguration(configuration);
    connect(m_socket.get(), &QWebSocket::sslErrors, this, [this](const QList<QSslError>& errors) {
        QStringList texts;
        for (const QSslError& error : errors) {
            texts << error.errorString();
        }
        m_securityError = texts.join("; ");
    });
}

void ServerLink::onOpened()
{
    m_handshake.stop();
    m_run.start();
    m_isOpen = true;
    m_silentChecks = 0;
    m_silence.start(m_settings.maxSilence / kChecks);
    if (auto* stream = m_socket->findChild<QAbstractSocket*>()) { // A part of a message counts.
        connect(stream, &QAbstractSocket::readyRead, this, [this] { m_silentChecks = 0; });
    }
    emit opened();
}

void ServerLink::onError(QAbstractSocket::SocketError error)
{
    if (!m_securityError.isEmpty()) {
        drop(m_securityError);
    } else if (error != QAbstractSocket::RemoteHostClosedError) {
        drop(m_socket->errorString());
    } else if (!m_isOpen) {
        drop("the server does not accept the connection: wrong path, missing header, or not a "
             "WebSocket server");
    } // Else the reason that the server gave comes with the end of the connection.
}

void ServerLink::onDisconnected()
{
    if (!m_isOpen) { // Before the error.
        onError(m_socket->error());
        return;
    }
    const int code = m_socket->closeCode();
    const QString reason = m_socket->closeReason();
    drop(QString("the connection has been closed with code %1%2")
             .arg(code)
             .arg(reason.isEmpty() ? QString() : ": " + reason));
}

/// Counts instead of looking at the clock: a machine that stood still has not listened meanwhile.
void ServerLink::checkSilence()
{
    ++m_silentChecks;
    if (m_silentChecks == kChecks / 2) {
        m_socket->ping();
    } else if (m_silentChecks >= kChecks) {
        drop(QString("no sign of life for %1 s").arg(double(m_settings.maxSilence.count()) / 1000));
    }
}

void ServerLink::drop(const QString& why)
{
    const bool wasOpen = m_isOpen;
    release();
    m_retry.start(m_delay.nextJittered(std::chrono::milliseconds(wasOpen ? m_run.elapsed() : 0)));
    // The path and what follows may hold what is nobody's business.
    const QString address = m_settings.url.toString(QUrl::RemovePath | QUrl::RemoveQuery);
    emit closed(wasOpen ? why : QString("cannot connect to %1: %2").arg(address, why));
}

void ServerLink::release()
{
    m_handshake.stop();
    m_silence.stop();
    m_isOpen = false;
    if (!m_socket) {
        return;
    }
    m_socket->disconnect(this);
    if (auto* stream = m_socket->findChild<QAbstractSocket*>()) {
        stream->disconnect(this);
        if (m_socket->isValid()) { // The kernel throws away what it holds and has not sent.
            const linger value{1, 0};
            ::setsockopt(int(stream->socketDescriptor()), SOL_SOCKET, SO_LINGER, &value,
                         sizeof value);
        }
    }
    m_socket->abort();
    m_socket.release()->deleteLater(); // It may have called us.
}

} // namespace norvo
