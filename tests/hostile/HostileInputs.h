// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/DoubleVec.h"

#include <QMetaMethod>
#include <QVariant>
#include <QVector>

/// The inputs of a device, found and called as wires do.
class HostileInputs
{
public:
    explicit HostileInputs(BaseDevice& device) : m_device(device) {}

    QStringList signatures() const
    {
        return m_device.grabMethods(QString(), QMetaMethod::Slot, false);
    }

    /// Sends the value to the input, in each of its arguments, as its type; what does not convert
    /// to that comes as the type's own first value: 0, an empty text, a null pointer.
    bool send(const QString& input, const QVariant& value) const
    {
        QString signature;
        QObject* const receiver = m_device.getReceiver(input, signature);
        const int index =
            receiver ? receiver->metaObject()->indexOfMethod(qPrintable(signature)) : -1;
        if (index < 0) {
            return false;
        }
        const QMetaMethod method = receiver->metaObject()->method(index);
        QVector<QVariant> values;
        QVector<void*> arguments{nullptr};
        for (int i = 0; i < method.parameterCount(); ++i) {
            values.append(converted(value, method.parameterType(i)));
        }
        for (int i = 0; i < values.size(); ++i) {
            const bool isVariant = method.parameterType(i) == QMetaType::QVariant;
            arguments.append(isVariant ? &values[i] : values[i].data());
        }
        QMetaObject::metacall(receiver, QMetaObject::InvokeMetaMethod, index, arguments.data());
        return true;
    }

    /// A few usual and unusual values to each input.
    void sendSome() const
    {
        const QVector<QVariant> some{
            1.5, qQNaN(), qInf(), -1e308, "on", QVariant::fromValue(DoubleVec{1, qQNaN(), -3})};
        const QStringList inputs = signatures();
        for (const QString& input : inputs) {
            for (const QVariant& value : some) {
                send(input, value);
            }
        }
    }

private:
    static QVariant converted(const QVariant& value, int type)
    {
        QVariant as = value;
        if (type == QMetaType::QVariant || as.userType() == type) {
            return as;
        }
        return as.canConvert(type) && as.convert(type) ? as : QVariant(type, nullptr);
    }

    BaseDevice& m_device;
};
