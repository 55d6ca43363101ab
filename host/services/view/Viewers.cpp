// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/Viewers.h"

#include <QBuffer>
#include <QDateTime>
#include <QElapsedTimer>
#include <QImageWriter>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QSslSocket>
#include <QWebSocket>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace norvo {

namespace {

constexpr int kMaxPieces = 100; // Of a frame; more are sent as one.
constexpr int kFastPng = 85;    // Of 100: quick to write rather than small.
constexpr int kAliveMs = 1000;  // So often a viewer hears of the panel at least.

/// Where the piece belongs, two numbers of two bytes, the highest first; then the piece as PNG.
QByteArray messageOf(const QImage& picture, const QRect& rect)
{
    QByteArray message(4, '\0');
    qToBigEndian(quint16(rect.left()), message.data());
    qToBigEndian(quint16(rect.top()), message.data() + 2);
    QBuffer buffer(&message);
    buffer.open(QIODevice::WriteOnly | QIODevice::Append);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(kFastPng);
    writer.write(picture.copy(rect));
    return message;
}

/// With the time, from which a viewer knows how late it hears.
QString textOf(QJsonObject object)
{
    object.insert("at", QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs));
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

struct Viewers::Viewer
{
    /// It may be sending a signal at this moment.
    struct DeleteLater
    {
        void operator()(QObject* object) const { object->deleteLater(); }
    };

    std::unique_ptr<QWebSocket, DeleteLater> connection;
    QPointer<QTcpSocket> carrier;
    QRegion pending; ///< Of the picture: what it has not been sent.
    QElapsedTimer sinceReady;
    QElapsedTimer sinceSent; ///< Invalid before the first.

    /// Whether it has taken all that it was sent.
    bool isReady() const
    {
        const auto* const encrypted = qobject_cast<const QSslSocket*>(carrier.data());
        return connection->bytesToWrite() == 0 && carrier && carrier->bytesToWrite() == 0 &&
               (!encrypted || encrypted->encryptedBytesToWrite() == 0);
    }
};

Viewers::Viewers(int maxCount, const QString& title) : m_maxCount(maxCount), m_title(title)
{
    m_timer.setParent(this); // It moves to the thread of the viewers with them.
    m_timer.setInterval(kIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &Viewers::tick);
}

/// At the end of their thread nothing is deleted later.
Viewers::~Viewers()
{
    for (const auto& viewer : m_viewers) {
        delete viewer->connection.release();
    }
}

void Viewers::add(QWebSocket* connection, QTcpSocket* carrier)
{
    if (count() >= m_maxCount) {
        connect(connection, &QWebSocket::disconnected, connection, &QObject::deleteLater);
        connection->setParent(this);
        connection->close(QWebSocketProtocol::CloseCodePolicyViolated,
                          QString("%1 viewers look already").arg(m_maxCount));
        return;
    }
    auto viewer = std::make_unique<Viewer>();
    connection->setParent(nullptr);
    viewer->connection.reset(connection);
    viewer->carrier = carrier;
    viewer->sinceReady.start();
    viewer->pending = m_picture.rect();
    connect(connection, &QWebSocket::disconnected, this,
            [this, connection] { remove(connection); });
    m_viewers.push_back(std::move(viewer));
    greet(*m_viewers.back());
    if (count() == 1) {
        m_timer.start();
        emit watchedChanged(true);
    }
    tick();
}

void Viewers::remove(const QWebSocket* connection)
{
    const auto found =
        std::find_if(m_viewers.begin(), m_viewers.end(), [connection](const auto& viewer) {
            return viewer->connection.get() == connection;
        });
    if (found == m_viewers.end()) {
        return;
    }
    m_viewers.erase(found);
    if (m_viewers.empty()) {
        m_timer.stop();
        m_picture = QImage();
        m_encodedRegion = QRegion();
        m_encoded.clear();
        emit watchedChanged(false);
    }
}

void Viewers::greet(Viewer& viewer)
{
    viewer.connection->sendTextMessage(
        textOf({{"title", m_title}, {"width", m_picture.width()}, {"height", m_picture.height()}}));
}

void Viewers::tick()
{
    bool isAnyReady = false;
    QVector<QWebSocket*> stuck;
    for (const auto& viewer : m_viewers) {
        if (viewer->isReady()) {
            viewer->sinceReady.start();
            isAnyReady = true;
        } else if (viewer->sinceReady.hasExpired(kStuckMs)) {
            stuck.append(viewer->connection.get());
        }
    }
    for (QWebSocket* connection : qAsConst(stuck)) {
        connection->abort();
        remove(connection);
    }
    if (isAnyReady && !m_isFrameWanted) {
        m_isFrameWanted = true;
        emit frameWanted();
    }
}

void Viewers::show(const Frame& frame)
{
    m_isFrameWanted = false;
    if (m_viewers.empty()) {
        return;
    }
    const bool isResized = !frame.size.isEmpty() && frame.size != m_picture.size();
    if (isResized) {
        m_picture = QImage(frame.size, QImage::Format_RGB32);
        m_picture.fill(Qt::black);
    }
    QRegion changes;
    for (const Tile& tile : frame.tiles) {
        const QRect rect = QRect(tile.at, tile.image.size()) & m_picture.rect();
        const int offset = rect.left() * int(sizeof(QRgb));
        for (int y = 0; y < rect.height(); ++y) {
            std::memcpy(m_picture.scanLine(rect.top() + y) + offset, tile.image.constScanLine(y),
                        size_t(rect.width()) * sizeof(QRgb));
        }
        changes += rect;
    }
    if (!changes.isEmpty()) {
        m_encodedRegion = QRegion();
        m_encoded.clear();
    }
    for (const auto& viewer : m_viewers) {
        if (isResized) {
            greet(*viewer);
            viewer->pending = QRegion();
        }
        viewer->pending += changes;
        sendTo(*viewer);
    }
}

/// What several viewers lack is written once.
const QVector<QByteArray>& Viewers::encoded(const QRegion& region)
{
    if (m_encodedRegion != region) {
        m_encodedRegion = region;
        m_encoded.clear();
        const QRegion pieces =
            region.rectCount() > kMaxPieces ? QRegion(region.boundingRect()) : region;
        for (const QRect& rect : pieces) {
            m_encoded.append(messageOf(m_picture, rect));
        }
    }
    return m_encoded;
}

void Viewers::sendTo(Viewer& viewer)
{
    const bool isDue = !viewer.sinceSent.isValid() || viewer.sinceSent.hasExpired(kAliveMs);
    if (!viewer.isReady() || (viewer.pending.isEmpty() && !isDue)) {
        return;
    }
    if (!viewer.pending.isEmpty()) {
        for (const QByteArray& message : encoded(viewer.pending)) {
            viewer.connection->sendBinaryMessage(message);
        }
        viewer.pending = QRegion();
    }
    viewer.connection->sendTextMessage(textOf({}));
    viewer.sinceSent.start();
}

} // namespace norvo
