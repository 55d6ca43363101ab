// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Wiring.h"

namespace norvo {

/// A wire whose values arrive from the event loop, so that one that runs round a cycle never
/// deepens the stack.
///
/// CycleFinder that share a device can multiply a value at each turn. Only so many are therefore
/// under way at a time: those sent beyond that are lost, until half of them have arrived.
class QueuedWire : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxUnderway = 1000; ///< Values under way.

    /// Both ends must outlive the wire.
    explicit QueuedWire(const Wire& wire);
    ~QueuedWire() override; ///< Cuts. What is under way still arrives.

    bool isConnected() const { return m_isConnected; } ///< False: such values cannot be stored.

private slots:
    void noteSent();
    void noteArrived();

private:
    void open();
    void close();

    const Wire m_wire;
    QMetaObject::Connection m_values;
    QMetaObject::Connection m_arrivals;
    bool m_isConnected = false;
    bool m_isOpen = false;
    bool m_lossReported = false;
    int m_underway = 0;
};

} // namespace norvo
