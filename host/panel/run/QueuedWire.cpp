// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/QueuedWire.h"

#include <QDebug>

namespace norvo {

QueuedWire::QueuedWire(const Wire& wire) : m_wire(wire)
{
    // The first to hear of a value, so that it can still be kept back.
    connectWire({wire.provider, wire.signal, this, "noteSent()"}, Qt::DirectConnection);
    open();
    m_isConnected = m_values;
}

QueuedWire::~QueuedWire()
{
    close();
}

void QueuedWire::open()
{
    m_isOpen = true;
    m_values = connectWire(m_wire, Qt::QueuedConnection);
    // Behind the value in the event queue.
    m_arrivals =
        connectWire({m_wire.provider, m_wire.signal, this, "noteArrived()"}, Qt::QueuedConnection);
}

void QueuedWire::close()
{
    m_isOpen = false;
    disconnect(m_values);
    disconnect(m_arrivals);
}

void QueuedWire::noteSent()
{
    if (!m_isOpen) {
        return;
    }
    if (m_underway < kMaxUnderway) {
        ++m_underway;
        return;
    }
    close();
    if (!m_lossReported) {
        m_lossReported = true;
        qWarning().noquote() << QString("%1.%2 -> %3.%4 goes round a cycle that multiplies its "
                                        "values; some are lost")
                                    .arg(m_wire.provider->objectName(), m_wire.signal,
                                         m_wire.receiver->objectName(), m_wire.slot);
    }
}

void QueuedWire::noteArrived()
{
    --m_underway;
    if (!m_isOpen && m_underway <= kMaxUnderway / 2) {
        open();
    }
}

} // namespace norvo
