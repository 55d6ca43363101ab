// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/logic/SettleDevice.h"

#include <QStringList>

#include <functional>

/// SettleNotes all that leaves, in its order.
class SettleNotes : public QObject
{
public:
    explicit SettleNotes(SettleDevice& device)
    {
        connect(&device, qOverload<double>(&SettleDevice::output), this,
                [this](double value) { add("number " + QString::number(value, 'g', 17)); });
        connect(&device, qOverload<QString>(&SettleDevice::output), this,
                [this](const QString& text) { add("text " + text); });
        connect(&device, qOverload<bool>(&SettleDevice::output), this,
                [this](bool on) { add(on ? "yes" : "no"); });
        connect(&device, &SettleDevice::refused, this,
                [this](const QString& reason) { add("refused " + reason); });
        connect(&device, &SettleDevice::pending, this,
                [this](bool on) { add(on ? "pending" : "done"); });
    }

    QStringList take()
    {
        QStringList notes;
        notes.swap(m_notes);
        return notes;
    }
    bool isEmpty() const { return m_notes.isEmpty(); }
    QStringList all() const { return m_notes; }

    std::function<void()> onNote;

private:
    void add(const QString& note)
    {
        m_notes.append(note);
        if (onNote) {
            onNote();
        }
    }

    QStringList m_notes;
};

/// A device that passes on at flush(), so that no test waits, unless it is given a time.
struct SettleSubject
{
    explicit SettleSubject(const QMap<QString, QString>& params = {{"mode", "flush"}})
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            device.setParam(param.key(), param.value());
        }
        device.setRunning(device.initialise());
    }

    template <class Value>
    QStringList pass(const Value& value)
    {
        device.input(value);
        device.flush();
        return notes.take();
    }

    SettleDevice device;
    SettleNotes notes{device};
};
