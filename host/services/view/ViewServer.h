// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/view/ViewGate.h"
#include "host/services/view/ViewSettings.h"
#include "host/services/view/Viewers.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSslCertificate>
#include <QSslKey>
#include <QTcpServer>
#include <QWebSocketServer>

namespace norvo {

/// Answers browsers: the page, the values, and the stream of pictures. Lives in a thread of its
/// own, so that no network makes the panel wait.
class ViewServer : public QTcpServer
{
    Q_OBJECT

public:
    ViewServer(const ViewSettings& settings, const QString& title);

    bool open(QString& error); ///< Listens from now on.
    QString url() const;
    Viewers& viewers() { return m_viewers; }
    void setValues(const QByteArray& json); ///< The answer to valuesWanted().

    static constexpr int kValuesMs = 100; ///< So long values answer for those who ask meanwhile.

signals:
    void valuesWanted(); ///< Not again before they are there.

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    bool isEncrypted() const { return !m_certificates.isEmpty(); }
    bool readCertificate(QString& error);
    void readHead(QTcpSocket& socket);
    void answer(QTcpSocket& socket, const HttpHead& head);
    void answerValues(QTcpSocket& socket);
    void upgrade(QTcpSocket& socket);
    void takeViewer();

    const ViewSettings m_settings;
    const ViewGate m_gate;
    Viewers m_viewers;
    QWebSocketServer m_handshakes;
    QHash<QString, QPointer<QTcpSocket>> m_carriers; ///< Of handshakes, by the other end.
    QList<QSslCertificate> m_certificates;
    QSslKey m_key;
    QList<QPointer<QTcpSocket>> m_waiting; ///< For values.
    QByteArray m_values;
    QElapsedTimer m_valuesAge; ///< Invalid before the first.
    int m_openCount = 0;       ///< Connections.
};

} // namespace norvo
