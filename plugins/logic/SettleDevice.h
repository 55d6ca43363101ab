// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/DeviceTypeInfo.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QVariant>

/// Passes a value on once it has been still for a time, lies within a range and is another than
/// the last: what keeps half-typed and doubled entries from a machine.
///
/// A value that comes takes the place of the one that waits, and is judged when its time is over.
/// What waits at the stop is never passed on.
class SettleDevice : public BaseDevice
{
    Q_OBJECT

public:
    SettleDevice();

    static DeviceTypeInfo typeInfo();

    bool initialise() override;
    void preShutdown() override;

signals:
    void output(double value); ///< A number, a text that reads as one, 1 or 0 for yes or no.
    void output(QString text); ///< Any value.
    void output(bool on);      ///< A yes or no, and what reads as one.
    /// Why a value is not passed on; empty at the next one that is not refused.
    void refused(QString reason);
    void pending(bool on); ///< Whether a value waits; at each change.

public slots:
    void input(double value); ///< Ignored, as are all of them, unless the device is running.
    void input(QString text); ///< The decimal point of a number may be a comma.
    void input(bool on);
    void flush();  ///< Passes on what waits, without waiting any longer.
    void cancel(); ///< Drops what waits.
    void forget(); ///< The next value counts as another than the last, whatever it is.

private:
    void take(const QVariant& value);
    void onTimeout();
    void endPending();
    void judge(const QVariant& value);
    void send(const QVariant& value);
    QString refusal(const QVariant& value) const;

    int m_timeMs = 0;
    bool m_waitsForFlush = false;
    bool m_passesChangesOnly = true;
    double m_min = 0.0;
    double m_max = 0.0;
    QVariant m_waiting;
    QVariant m_last; ///< That was passed on; invalid: none.
    bool m_isPending = false;
    bool m_hasRefused = false;
    QElapsedTimer m_sinceInput;
    QTimer m_timer;
};
