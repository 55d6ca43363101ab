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

    void restartTimeout()
    {
        if (m_timeout) {
            m_timeout->start();
        }
    }

    /// To be called in the Device's own input slot, as is the next: it looks for the sender. A
    /// number came: number first.
    void passOn(double value)
    {
        const QString text = QString::number(value, 'g', 6);
        emit self().output(value);
        emit self().output(text);
        if (const QObject* const from = sender()) {
            const QString name = from->objectName();
            emit self().output(value, name);
            emit self().output(text, name);
        }
    }

    /// A text came: text first. What is no number counts as 0.
    void passOn(const QString& text)
    {
        const double value = text.toDouble();
        emit self().output(text);
        emit self().output(value);
        if (const QObject* const from = sender()) {
            const QString name = from->objectName();
            emit self().output(text, name);
            emit self().output(value, name);
        }
    }

private:
    Device& self() { return static_cast<Device&>(*this); }

    std::unique_ptr<QTimer> m_timeout; ///< Repeats until a value comes.
};
