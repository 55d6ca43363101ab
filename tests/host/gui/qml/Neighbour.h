// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTcpServer>
#include <QTcpSocket>

/// A server on this machine that counts who asks it for something, and answers with a document.
class Neighbour
{
public:
    Neighbour()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            ++m_calls;
            QTcpSocket* const socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                const bool isThere = socket->readAll().startsWith("GET /far.qml ");
                const QByteArray body =
                    isThere ? "import QtQuick 2.0\nItem { signal far() }\n" : "";
                socket->write((isThere ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 Not Found\r\n") +
                              QByteArray("Connection: close\r\nContent-Length: ") +
                              QByteArray::number(body.size()) + "\r\n\r\n" + body);
                socket->disconnectFromHost();
            });
        });
    }

    QString url(const QString& path) const
    {
        return QString("http://127.0.0.1:%1/%2").arg(m_server.serverPort()).arg(path);
    }
    int calls() const { return m_calls; }

private:
    QTcpServer m_server;
    int m_calls = 0;
};
