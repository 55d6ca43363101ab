// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

#include <QTimer>

#include <memory>

/// What the readouts have in common: a time-out, and four outputs for a value as number and as
/// text, each without and with the object name of the device that sent it. The named ones are left
/// out when the value came by a plain call of the slot.
///
/// Without Q_OBJECT: signals and slots are the Device's own.
template <class Device>
class ReadoutDevice : public BaseGuiDevice
{
public:
    void deinitialise() override { m_timeout.reset(); }

protected:
    /// Runs the Device's timerTimeout() each time that so long no value came; below 1: never.
    void startTimeout(int milliseconds)
    {
        m_timeout.reset();
        if (milliseconds >= 1) {
            m_timeout = std::make_unique<QTimer>();
            connect(m_timeout.get(), SIGNAL(timeout()), this, SLOT(timerTimeout()));
            m_timeout->start(milliseconds);
        }
    }

    /// Passes a value on in two forms, and whether it did: only while the device is running. To be
    /// called in the Device's own input slot, for it looks for the sender. Whoever passed a value
    /// on restarts the time-out once all that follows from the value is done.
    template <class AsItCame, class Otherwise>
    bool passOn(const AsItCame& value, const Otherwise& sameValue)
    {
        if (!isRunning()) {
            return false;
        }
        emit self().output(value);
        emit self().output(sameValue);
        if (const QObject* const from = sender()) {
            const QString name = from->objectName();
            emit self().output(value, name);
            emit self().output(sameValue, name);
        }
        return true;
    }

    bool passOnNumber(double value) { return passOn(value, QString::number(value, 'g', 6)); }
    bool passOnText(const QString& text)
    {
        return passOn(text, text.toDouble());
    } ///< 0: no number.

    void restartTimeout()
    {
        if (m_timeout) {
            m_timeout->start();
        }
    }

private:
    Device& self() { return static_cast<Device&>(*this); }

    std::unique_ptr<QTimer> m_timeout; ///< Repeats until a value comes.
};
