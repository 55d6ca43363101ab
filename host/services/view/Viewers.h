// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/Frame.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QTcpSocket;
class QWebSocket;

namespace norvo {

/// Those who look at the panel at this moment. Each is sent what has changed since what it was sent
/// last, once it has taken that: one that takes nothing gets nothing, and nothing is drawn for it.
class Viewers : public QObject
{
    Q_OBJECT

public:
    static constexpr int kIntervalMs = 200; ///< From one frame to the next at least.
    static constexpr int kStuckMs = 60000; ///< One that has taken nothing for so long is sent away.

    explicit Viewers(int maxCount, const QString& title);
    ~Viewers() override;

    int count() const { return int(m_viewers.size()); }
    /// Takes the connection over; `carrier` is the socket under it. One too many is told so.
    void add(QWebSocket* connection, QTcpSocket* carrier);
    void show(const Frame& frame); ///< The answer to frameWanted().

signals:
    void watchedChanged(bool isWatched);
    void frameWanted(); ///< Not again before it is there.

private:
    struct Viewer;

    void tick();
    void greet(Viewer& viewer);
    void remove(const QWebSocket* connection);
    void sendTo(Viewer& viewer);
    const QVector<QByteArray>& encoded(const QRegion& region);

    const int m_maxCount;
    const QString m_title;
    QTimer m_timer;
    bool m_isFrameWanted = false;
    QImage m_picture; ///< As it is now.
    std::vector<std::unique_ptr<Viewer>> m_viewers;
    QRegion m_encodedRegion; ///< Of the picture as it is now.
    QVector<QByteArray> m_encoded;
};

} // namespace norvo
