// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/modbus/ModbusRequest.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace norvo {

/// A line to one server, with one request on it at a time.
///
/// Qt's own Modbus clients take an answer for that of another unit, of another address or, on a
/// serial line, of the request before. So the frames are made and judged here, and an answer that
/// is not exactly that of the request is none. After broken() the line is of no further use.
/// Connect its signals queued: it can then be deleted at any time, and nothing is written any more.
class ModbusLine : public QObject
{
    Q_OBJECT

public:
    using Milliseconds = std::chrono::milliseconds;

    /// `timeout`: how long to wait for one answer.
    ModbusLine(quint8 unit, Milliseconds timeout);

    virtual void open() = 0; ///< opened() or broken() follows.
    /// answered(), unanswered() or broken() follows. Sent up to `attempts` times.
    void ask(const ModbusRequest& request, int attempts);
    bool isAsked() const { return m_isAsked; } ///< And still waits.

signals:
    void opened();
    void answered(QByteArray pdu); ///< A regular answer or an exception, to what was asked.
    void unanswered(QString reason);
    void broken(QString reason);

protected:
    virtual void send(const QByteArray& pdu) = 0; ///< Calls wait() when it is on the wire.
    virtual void onTimeout() {}                   ///< An answer can still come.

    quint8 unit() const { return m_unit; }
    Milliseconds timeout() const { return m_timeout; }
    const ModbusRequest& request() const { return m_request; }
    void wait(Milliseconds time) { m_timer.start(time); }
    /// An answer has come. Whether it is that of the request, which has an end then.
    bool take(quint8 unit, const QByteArray& pdu);
    void note(const QString& hint) { m_hint = hint; } ///< What came instead of an answer.
    void breakOff(const QString& reason);
    bool isBroken() const { return m_isBroken; }

private:
    void onTimer();

    const quint8 m_unit;
    const Milliseconds m_timeout;
    QTimer m_timer;
    ModbusRequest m_request;
    QString m_hint;
    int m_attemptsLeft = 0;
    bool m_isAsked = false;
    bool m_isBroken = false;
};

} // namespace norvo
