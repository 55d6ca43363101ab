// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/modbus/ModbusLine.h"

namespace norvo {

ModbusLine::ModbusLine(quint8 unit, Milliseconds timeout) : m_unit(unit), m_timeout(timeout)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &ModbusLine::onTimer);
}

void ModbusLine::ask(const ModbusRequest& request, int attempts)
{
    Q_ASSERT(!m_isAsked);
    m_request = request;
    m_attemptsLeft = attempts - 1;
    m_hint.clear();
    m_isAsked = true;
    send(m_request.pdu);
}

bool ModbusLine::take(quint8 unit, const QByteArray& pdu)
{
    if (unit != m_unit) {
        note(QString("an answer came from unit %1 instead of %2").arg(unit).arg(m_unit));
    } else if (!m_isAsked) {
        note("an answer came that nothing asked for");
    } else if (!m_request.fits(pdu) && !m_request.isRefusedBy(pdu)) {
        note("an answer came that does not fit the request");
    } else {
        m_timer.stop();
        m_isAsked = false;
        emit answered(pdu);
        return true;
    }
    return false;
}

void ModbusLine::onTimer()
{
    onTimeout();
    if (m_attemptsLeft > 0) {
        --m_attemptsLeft;
        send(m_request.pdu);
        return;
    }
    m_isAsked = false;
    emit unanswered(QString("no answer within %1 ms").arg(m_timeout.count()) +
                    (m_hint.isEmpty() ? "" : "; ") + m_hint);
}

void ModbusLine::breakOff(const QString& reason)
{
    if (!m_isBroken) {
        m_isBroken = true;
        m_isAsked = false;
        m_timer.stop();
        emit broken(reason);
    }
}

} // namespace norvo
