// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlWrapper.h"

#include "norvo/DoubleVec.h"
#include "norvo/Truncation.h"

#include <QJSValue>
#include <QVarLengthArray>
#include <QVariant>

#include <cmath>
#include <limits>

namespace norvo {

namespace {

bool isNumber(const QVariant& value)
{
    const int type = value.userType();
    return type == QMetaType::Float || (type >= QMetaType::Int && type <= QMetaType::Double);
}

QVariant toBool(const QVariant& value)
{
    if (value.userType() == QMetaType::Bool) {
        return value;
    }
    const QString text = value.toString();
    if (value.userType() == QMetaType::QString && (text == "true" || text == "false")) {
        return text == "true";
    }
    return isNumber(value) ? QVariant(value.toDouble() != 0) : QVariant();
}

QVariant toDouble(const QVariant& value)
{
    if (isNumber(value) || value.userType() == QMetaType::Bool) {
        return value.toDouble();
    }
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    return ok ? QVariant(number) : QVariant();
}

QVariant toInt(const QVariant& value)
{
    const QVariant number = toDouble(value);
    return number.isValid() && !std::isnan(number.toDouble())
               ? QVariant(truncatedToInt(number.toDouble()))
               : QVariant();
}

QVariant toText(const QVariant& value)
{
    return value.canConvert<QString>() ? QVariant(value.toString()) : QVariant();
}

QVariant toNumbers(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<DoubleVec>()) {
        return value;
    }
    const bool isList = value.userType() == QMetaType::QVariantList;
    if (!isList && !(value.userType() > QMetaType::User && value.canConvert<QVariantList>())) {
        return {};
    }
    const QVariantList list = value.toList();
    DoubleVec numbers;
    numbers.reserve(list.size());
    for (const QVariant& element : list) {
        const QVariant number = toDouble(element);
        numbers.append(number.isValid() ? number.toDouble()
                                        : std::numeric_limits<double>::quiet_NaN());
    }
    return QVariant::fromValue(numbers);
}

/// A value of the wiring as QML is to see it: arrays of numbers and bytes as a JavaScript array.
QVariant toQml(int type, const void* value)
{
    if (type == QMetaType::QVariant) {
        const auto& variant = *static_cast<const QVariant*>(value);
        return variant.userType() == QMetaType::QVariant
                   ? variant
                   : toQml(variant.userType(), variant.constData());
    }
    if (type == qMetaTypeId<DoubleVec>()) {
        const auto& numbers = *static_cast<const DoubleVec*>(value);
        return QVariantList(numbers.cbegin(), numbers.cend());
    }
    if (type == QMetaType::QByteArray) {
        const auto& bytes = *static_cast<const QByteArray*>(value);
        const auto* const first = reinterpret_cast<const uchar*>(bytes.constData());
        return QVariantList(first, first + bytes.size());
    }
    return QVariant(type, value);
}

/// A value that came out of QML, without ties to its engine.
QVariant fromQml(const QVariant& value)
{
    return value.userType() == qMetaTypeId<QJSValue>() ? value.value<QJSValue>().toVariant()
                                                       : value;
}

/// `value`, which has no ties to an engine, as that type. An invalid variant where it does not read
/// as one: numbers, true and false and texts that say such read as one another, arrays of numbers
/// as an array only.
QVariant convertedTo(int type, const QVariant& value)
{
    switch (type) {
    case QMetaType::Double:
        return toDouble(value);
    case QMetaType::QString:
        return toText(value);
    case QMetaType::Bool:
        return toBool(value);
    case QMetaType::Int:
        return toInt(value);
    default:
        return type == qMetaTypeId<DoubleVec>() ? toNumbers(value) : value;
    }
}

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
