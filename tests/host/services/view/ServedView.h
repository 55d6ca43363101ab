// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/ViewService.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QTcpSocket>
#include <QVBoxLayout>
#include <QWebSocket>
#include <QtTest>

constexpr int kPatience = 30000; // ms

inline const QByteArray kToken = QByteArrayLiteral("a-long-and-secret-token");

/// A window of one label, served.
class Served
{
public:
    explicit Served(const norvo::ViewSettings& settings = {})
        : service(settings, {window, "Title",
                             [this] { return "{\"asked\":" + QByteArray::number(++asked) + '}'; }})
    {
        window.resize(400, 300);
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(&label);
        label.setParent(&window);
        window.show();
        isOpen = service.open(error);
    }

    quint16 port() const { return quint16(QUrl(service.url()).port()); }

    QWidget window;
    QLabel label{"one"};
    int asked = 0; ///< For values.
    norvo::ViewService service;
    bool isOpen = false;
    QString error;
};

/// All that comes before the other end closes.
inline QByteArray answerTo(quint16 port, const QByteArray& request)
{
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", port);
    socket.write(request);
    QElapsedTimer clock;
    clock.start();
    while (socket.state() != QAbstractSocket::UnconnectedState && !clock.hasExpired(kPatience)) {
        QTest::qWait(5);
    }
    return socket.readAll();
}

inline QByteArray get(const QByteArray& path, const QByteArray& fields = {})
{
    return "GET " + path + " HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n";
}

/// One who looks.
class Looking : public QWebSocket
{
public:
    explicit Looking(quint16 port, const QByteArray& path = "/stream", const QString& origin = {})
        : QWebSocket(origin)
    {
        connect(this, &QWebSocket::textMessageReceived, this, [this](const QString& text) {
            const QJsonObject message = QJsonDocument::fromJson(text.toUtf8()).object();
            if (!message.contains("width")) {
                ++aliveCount;
            } else {
                title = message["title"].toString();
                size = QSize(message["width"].toInt(), message["height"].toInt());
                picture = size.isEmpty() ? QImage() : QImage(size, QImage::Format_RGB32);
                picture.fill(Qt::magenta); // What memory holds may be an older picture.
            }
        });
        connect(this, &QWebSocket::binaryMessageReceived, this, [this](const QByteArray& message) {
            const auto number = [&message](int at) {
                return int(uchar(message[at])) * 256 + int(uchar(message[at + 1]));
            };
            const QImage tile =
                QImage::fromData(message.mid(4), "png").convertToFormat(QImage::Format_RGB32);
            for (int y = 0; y < tile.height(); ++y) {
                for (int x = 0; x < tile.width(); ++x) {
                    picture.setPixel(number(0) + x, number(2) + y, tile.pixel(x, y));
                }
            }
            ++tileCount;
        });
        open(QUrl(QString("ws://127.0.0.1:%1%2").arg(port).arg(QString::fromUtf8(path))));
    }

    bool isAt(QWidget& window) const
    {
        return picture == window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    QString title;
    QSize size;
    QImage picture;
    int tileCount = 0;
    int aliveCount = 0;
};

/// One who looks and takes nothing: a handshake, and no reading after it.
class Sleeping : public QTcpSocket
{
public:
    explicit Sleeping(quint16 port)
    {
        setReadBufferSize(1);
        connectToHost("127.0.0.1", port);
        write(get("/stream", "Upgrade: websocket\r\nConnection: Upgrade\r\n"
                             "Sec-WebSocket-Version: 13\r\n"
                             "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"));
    }
};
