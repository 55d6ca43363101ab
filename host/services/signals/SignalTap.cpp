// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"

#include <utility>

namespace norvo {

QVariant SignalArguments::at(int index) const
{
    const int type =
        index >= 0 && index < count() ? m_signal.parameterType(index) : int(QMetaType::UnknownType);
    if (type == QMetaType::QVariant) {
        return *static_cast<const QVariant*>(m_values[index + 1]);
    }
    return type == QMetaType::UnknownType ? QVariant() : QVariant(type, m_values[index + 1]);
}

SignalTap::SignalTap(const QMetaMethod& signal, Hear hear, QObject& owner)
    : QObject(&owner), m_signal(signal), m_hear(std::move(hear))
{}

SignalTap* SignalTap::open(QObject& sender, const QString& signature, Hear hear, QObject& owner)
{
    const QMetaObject& meta = *sender.metaObject();
    const int index = meta.indexOfSignal(signature.toLatin1().constData());
    if (index < 0) {
        return nullptr;
    }
    auto* const tap = new SignalTap(meta.method(index), std::move(hear), owner);
    QMetaObject::connect(&sender, index, tap, staticMetaObject.methodCount(), Qt::DirectConnection);
    return tap;
}

SignalTap* SignalTap::open(BaseDevice& device, const QString& output, Hear hear, QObject& owner)
{
    QString signature;
    QObject* const provider = device.getProvider(output, signature);
    return provider ? open(*provider, signature, std::move(hear), owner) : nullptr;
}

int SignalTap::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    const int own = QObject::qt_metacall(call, id, arguments);
    if (call == QMetaObject::InvokeMetaMethod && own == 0) {
        m_hear({m_signal, arguments});
        return -1;
    }
    return own;
}

} // namespace norvo
