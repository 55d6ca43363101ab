// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlWrapper.h"

#include "host/gui/qml/QmlConversion.h"

#include <QVarLengthArray>

namespace norvo {

namespace {

using Values = QVarLengthArray<QVariant, 4>;
using Arguments = QVarLengthArray<void*, 5>;

} // namespace

QmlWrapper::QmlWrapper(QObject& item) : m_signals(qmlSignals(item)), m_slots(qmlSlots(item))
{
    for (int i = 0; i < m_signals.size(); ++i) {
        m_ports.addSignal(m_signals.at(i).name, m_signals.at(i).types);
        if (!m_signals.at(i).isConverted()) {
            m_ear.addSlot("hear" + QByteArray::number(i), m_signals.at(i).types,
                          [this, i](void** arguments) { passOn(i, arguments); });
        }
    }
    for (int i = 0; i < m_slots.size(); ++i) {
        m_ports.addSlot(m_slots.at(i).name, m_slots.at(i).types,
                        [this, i](void** arguments) { callItem(m_slots.at(i), arguments); });
    }
    m_ports.build();
    m_ear.build();
    bind(item);
}

bool QmlWrapper::fits(const QObject& item) const
{
    return m_signals == qmlSignals(item) && m_slots == qmlSlots(item);
}

void QmlWrapper::bind(QObject& item)
{
    m_item = &item;
    m_signals = qmlSignals(item);
    m_slots = qmlSlots(item);
    int ear = m_ear.metaObject()->methodOffset();
    for (const QmlMethod& method : qAsConst(m_signals)) {
        if (!method.isConverted()) {
            QMetaObject::connect(&item, method.itemIndex, &m_ear, ear++, Qt::DirectConnection);
        }
    }
}

void QmlWrapper::unbind()
{
    if (m_item) {
        m_item->disconnect(&m_ear);
    }
    m_item = nullptr;
}

/// Emits the signal and, where something listens, its converted forms.
void QmlWrapper::passOn(int signal, void** arguments)
{
    if (!m_signals.at(signal).types.contains(QMetaType::QVariant)) {
        m_ports.activate(signal, arguments);
        return;
    }
    const int count = m_signals.at(signal).types.size();
    Values untyped(count);
    Arguments passed(count + 1);
    passed[0] = nullptr;
    for (int i = 0; i < count; ++i) {
        passed[i + 1] = arguments[i + 1];
        if (m_signals.at(signal).types[i] == QMetaType::QVariant) {
            untyped[i] = fromQml(*static_cast<QVariant*>(arguments[i + 1]));
            passed[i + 1] = &untyped[i];
        }
    }
    const auto isForm = [this](int i) {
        return i < m_signals.size() && m_signals.at(i).isConverted();
    };
    // Whoever hears a signal may be the end of this object.
    const QPointer<QObject> guard(isForm(signal + 1) ? &m_ports : nullptr);
    m_ports.activate(signal, passed.data());
    for (int i = signal + 1; guard && isForm(i); ++i) {
        QVariant value =
            m_ports.isHeard(i) ? convertedTo(m_signals.at(i).types[0], untyped[0]) : QVariant();
        if (value.isValid()) {
            void* converted[] = {nullptr, value.data()};
            m_ports.activate(i, converted);
        }
    }
}

void QmlWrapper::callItem(const QmlMethod& slot, void** arguments) const
{
    if (!m_item) {
        return;
    }
    Values values(slot.types.size());
    Arguments passed(slot.types.size() + 1);
    passed[0] = nullptr; // the answer is not read
    for (int i = 0; i < slot.types.size(); ++i) {
        passed[i + 1] = arguments[i + 1];
        if (slot.itemTypes[i] == QMetaType::QVariant) {
            values[i] = toQml(slot.types[i], arguments[i + 1]);
            passed[i + 1] = &values[i];
        }
    }
    QMetaObject::metacall(m_item, QMetaObject::InvokeMetaMethod, slot.itemIndex, passed.data());
}

} // namespace norvo
