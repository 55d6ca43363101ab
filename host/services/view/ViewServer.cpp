// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/ViewServer.h"

#include <QFile>
#include <QHostAddress>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>
#include <QWebSocket>

namespace norvo {

namespace {

constexpr int kMaxOpen = 64;         // Connections, with those of viewers.
constexpr int kPatienceMs = 10000;   // For a head, for an encryption, for an answer that is taken.
constexpr quint64 kMaxHeard = 1024;  // Bytes of a message from a viewer, none of which is read.
constexpr int kSendBuffer = 65536;   // Bytes; what lies in it grows old before it is seen.
const char kPatience[] = "patience"; // Ends a connection that has not become a viewer's by then.

QByteArray fileNamed(const char* name)
{
    QFile file(QString(":/norvo/view/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Sends the answer and ends the connection.
void reply(QTcpSocket& socket, const QByteArray& status, const QByteArray& kind,
           const QByteArray& body, const QByteArray& fields = {})
{
    socket.write("HTTP/1.1 " + status + "\r\nContent-Type: " + kind +
                 "; charset=utf-8\r\nContent-Length: " + QByteArray::number(body.size()) +
                 "\r\nConnection: close\r\nCache-Control: no-store\r\n"
                 "X-Content-Type-Options: nosniff\r\nReferrer-Policy: no-referrer\r\n"
                 "X-Frame-Options: SAMEORIGIN\r\n"
                 "Content-Security-Policy: default-src 'none'; script-src 'self'; "
                 "style-src 'self'; img-src 'self' blob: data:; connect-src 'self' ws: wss:\r\n" +
                 fields + "\r\n" + body);
    socket.disconnectFromHost();
}

QString otherEnd(const QHostAddress& address, quint16 port)
{
    return address.toString() + ' ' + QString::number(port);
}

} // namespace

ViewServer::ViewServer(const ViewSettings& settings, const QString& title)
    : m_settings(settings),
      m_gate(settings.token),
      m_viewers(settings.maxViewers, title),
      m_handshakes("norvo-panel", QWebSocketServer::NonSecureMode)
{
    m_viewers.setParent(this); // They move to the server's thread with it.
    m_handshakes.setParent(this);
    connect(&m_handshakes, &QWebSocketServer::newConnection, this, &ViewServer::takeViewer);
}

bool ViewServer::readCertificate(QString& error)
{
    m_certificates = QSslCertificate::fromPath(m_settings.certificateFile, QSsl::Pem,
                                               QSslCertificate::PatternSyntax::FixedString);
    if (m_certificates.isEmpty()) {
        error = QString("%1 holds no certificate in PEM form").arg(m_settings.certificateFile);
        return false;
    }
    QFile file(m_settings.keyFile);
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    for (const QSsl::KeyAlgorithm algorithm : {QSsl::Rsa, QSsl::Ec}) {
        m_key = m_key.isNull() ? QSslKey(text, algorithm) : m_key;
    }
    if (m_key.isNull()) {
        error = QString("%1 holds no private key in PEM form without a password")
                    .arg(m_settings.keyFile);
    } else if (!QSslSocket::supportsSsl()) {
        error = "this system's Qt cannot encrypt";
    }
    return error.isEmpty();
}

bool ViewServer::open(QString& error)
{
    if (!m_settings.certificateFile.isEmpty() && !readCertificate(error)) {
        return false;
    }
    if (!listen(QHostAddress(m_settings.address), m_settings.port)) {
        error = QString("cannot listen at %1, port %2: %3")
                    .arg(m_settings.address)
                    .arg(m_settings.port)
                    .arg(errorString());
        return false;
    }
    return true;
}

QString ViewServer::url() const
{
    QUrl url;
    url.setScheme(isEncrypted() ? "https" : "http");
    url.setHost(m_settings.address);
    url.setPort(serverPort());
    url.setPath("/");
    return url.toString();
}

void ViewServer::incomingConnection(qintptr descriptor)
{
    auto* const socket = isEncrypted() ? new QSslSocket(this) : new QTcpSocket(this);
    if (!socket->setSocketDescriptor(descriptor) || m_openCount >= kMaxOpen) {
        delete socket;
        return;
    }
    ++m_openCount;
    connect(socket, &QObject::destroyed, this, [this] { --m_openCount; });
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readHead(*socket); });
    socket->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kSendBuffer);
    auto* const patience = new QTimer(socket);
    patience->setObjectName(kPatience);
    connect(patience, &QTimer::timeout, socket, &QTcpSocket::abort);
    patience->start(kPatienceMs);
    if (auto* const encrypted = qobject_cast<QSslSocket*>(socket)) {
        encrypted->setLocalCertificateChain(m_certificates);
        encrypted->setPrivateKey(m_key);
        encrypted->setProtocol(QSsl::TlsV1_2OrLater);
        encrypted->startServerEncryption();
    }
}

/// Leaves the head where it is: a handshake reads it once more.
void ViewServer::readHead(QTcpSocket& socket)
{
    const QByteArray text = socket.peek(HttpHead::kMaxSize);
    if (text.indexOf("\r\n\r\n") < 0 && text.size() < HttpHead::kMaxSize) {
        return;
    }
    disconnect(&socket, &QTcpSocket::readyRead, this, nullptr);
    const auto head = HttpHead::parse(text);
    if (head) {
        answer(socket, *head);
    } else {
        reply(socket, "400 Bad Request", "text/plain", "This is no request.\n");
    }
}

void ViewServer::answer(QTcpSocket& socket, const HttpHead& head)
{
    switch (m_gate.answerTo(head)) {
    case ViewGate::Answer::Page:
        return reply(socket, "200 OK", "text/html", fileNamed("view.html"));
    case ViewGate::Answer::Script:
        return reply(socket, "200 OK", "text/javascript", fileNamed("view.js"));
    case ViewGate::Answer::Style:
        return reply(socket, "200 OK", "text/css", fileNamed("view.css"));
    case ViewGate::Answer::Values:
        return answerValues(socket);
    case ViewGate::Answer::Stream:
        return upgrade(socket);
    case ViewGate::Answer::TakeCookie:
        return reply(socket, "303 See Other", "text/plain", "The panel is at /\n",
                     "Location: /\r\nSet-Cookie: " + m_gate.setCookie(isEncrypted()) + "\r\n");
    case ViewGate::Answer::TokenNeeded:
        return reply(socket, "401 Unauthorized", "text/plain",
                     "This panel shows itself to those who know its token: /?token=...\n",
                     "WWW-Authenticate: Bearer\r\n");
    case ViewGate::Answer::ForeignPage:
        return reply(socket, "403 Forbidden", "text/plain",
                     "Without a token this panel shows itself as localhost only.\n");
    case ViewGate::Answer::WrongMethod:
        return reply(socket, "405 Method Not Allowed", "text/plain",
                     "This panel can be looked at, and nothing else.\n", "Allow: GET\r\n");
    case ViewGate::Answer::UpgradeNeeded:
        return reply(socket, "426 Upgrade Required", "text/plain",
                     "The pictures come over a WebSocket.\n", "Upgrade: websocket\r\n");
    case ViewGate::Answer::NotFound:
        return reply(socket, "404 Not Found", "text/plain", "There are /, /values and /stream.\n");
    }
}

void ViewServer::answerValues(QTcpSocket& socket)
{
    if (m_valuesAge.isValid() && !m_valuesAge.hasExpired(kValuesMs)) {
        return reply(socket, "200 OK", "application/json", m_values);
    }
    m_waiting.append(&socket);
    if (m_waiting.size() == 1) {
        emit valuesWanted();
    }
}

void ViewServer::setValues(const QByteArray& json)
{
    m_values = json;
    m_valuesAge.start();
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto& socket : waiting) {
        if (socket) {
            reply(*socket, "200 OK", "application/json", json);
        }
    }
}

void ViewServer::upgrade(QTcpSocket& socket)
{
    m_carriers.insert(otherEnd(socket.peerAddress(), socket.peerPort()), &socket);
    m_handshakes.handleConnection(&socket);
}

void ViewServer::takeViewer()
{
    while (QWebSocket* const connection = m_handshakes.nextPendingConnection()) {
        connection->setMaxAllowedIncomingFrameSize(kMaxHeard);
        connection->setMaxAllowedIncomingMessageSize(kMaxHeard);
        QTcpSocket* const carrier =
            m_carriers.take(otherEnd(connection->peerAddress(), connection->peerPort()));
        if (carrier) {
            delete carrier->findChild<QTimer*>(kPatience);
        }
        m_viewers.add(connection, carrier);
    }
}

} // namespace norvo
