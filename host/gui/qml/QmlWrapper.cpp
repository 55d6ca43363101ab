#include "host/gui/qml/QmlWrapper.h"

#include "host/gui/qml/QmlConversion.h"

#include <QStringList>
#include <QVarLengthArray>

#include <private/qmetaobjectbuilder_p.h>

#include <algorithm>
#include <cstdlib>

namespace norvo {

namespace {

std::shared_ptr<const QMetaObject> makeMetaObject(const QmlMethods& signalMethods,
                                                  const QmlMethods& slotMethods)
{
    QMetaObjectBuilder builder;
    builder.setClassName("norvo::QmlWrapper");
    builder.setSuperClass(&QObject::staticMetaObject);
    for (const QmlMethod& method : signalMethods) {
        builder.addSignal(method.signature());
    }
    for (const QmlMethod& method : slotMethods) {
        builder.addSlot(method.signature());
    }
    return {builder.toMetaObject(), [](QMetaObject* meta) { std::free(meta); }};
}

bool areAlike(const QmlMethods& some, const QmlMethods& others)
{
    return std::equal(some.cbegin(), some.cend(), others.cbegin(), others.cend(),
                      [](const QmlMethod& a, const QmlMethod& b) {
                          return a.name == b.name && a.types == b.types &&
                                 a.itemTypes == b.itemTypes;
                      });
}

using Values = QVarLengthArray<QVariant, 4>;
using Arguments = QVarLengthArray<void*, 5>;

/// Untyped values as what follows needs them; false where one does not read as its type.
bool convert(const QmlMethod& method, Values& values)
{
    for (int i = 0; i < values.size(); ++i) {
        if (method.itemTypes[i] != method.types[i]) {
            values[i] = convertedTo(method.types[i], values[i]);
            if (!values[i].isValid()) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

QmlWrapper::QmlWrapper(QObject& item)
    : m_signals(qmlSignals(item)),
      m_slots(qmlSlots(item)),
      m_meta(makeMetaObject(m_signals, m_slots))
{
    bind(item);
}

QmlWrapper::~QmlWrapper() = default;

bool QmlWrapper::fits(const QObject& item) const
{
    return areAlike(m_signals, qmlSignals(item)) && areAlike(m_slots, qmlSlots(item));
}

void QmlWrapper::bind(QObject& item)
{
    if (m_item) {
        m_item->disconnect(this);
    }
    m_item = &item;
    m_signals = qmlSignals(item);
    m_slots = qmlSlots(item);
    for (int i = 0; i < m_signals.size(); ++i) {
        if (!m_signals[i].isConverted()) {
            QMetaObject::connect(&item, m_signals[i].itemIndex, this, m_meta->methodOffset() + i,
                                 Qt::DirectConnection);
        }
    }
}

QString QmlWrapper::resolve(const QString& name, QMetaMethod::MethodType type) const
{
    if (!name.contains('(')) {
        return name.isEmpty() ? QString() : signatures(name, type).value(0);
    }
    const QByteArray wanted = QMetaObject::normalizedSignature(name.toUtf8().constData());
    const int index = m_meta->indexOfMethod(wanted);
    return index >= m_meta->methodOffset() && m_meta->method(index).methodType() == type
               ? QString::fromUtf8(wanted)
               : QString();
}

QStringList QmlWrapper::signatures(const QString& name, QMetaMethod::MethodType type) const
{
    QStringList found;
    for (int i = m_meta->methodOffset(); i < m_meta->methodCount(); ++i) {
        const QMetaMethod method = m_meta->method(i);
        if (method.methodType() == type && (name.isEmpty() || method.name() == name.toUtf8())) {
            found.append(QString::fromUtf8(method.methodSignature()));
        }
    }
    return found;
}

int QmlWrapper::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    const int count = m_signals.size() + m_slots.size();
    if (id < 0 || (call != QMetaObject::InvokeMetaMethod &&
                   call != QMetaObject::RegisterMethodArgumentMetaType)) {
        return id;
    }
    if (call == QMetaObject::RegisterMethodArgumentMetaType) {
        *static_cast<int*>(arguments[0]) = -1; // all are known already
    } else if (id < m_signals.size()) {
        passOn(id, arguments);
    } else if (id < count) {
        callItem(m_slots[id - m_signals.size()], arguments);
    }
    return id - count;
}

/// Emits the signal and, where somebody listens, its converted forms.
void QmlWrapper::passOn(int signal, void** arguments)
{
    const auto meta = m_meta; // Whoever hears a signal may be the end of this object.
    const QmlMethod plain = m_signals[signal];
    if (plain.isConverted() || !plain.types.contains(QMetaType::QVariant)) {
        QMetaObject::activate(this, meta.get(), signal, arguments);
        return;
    }
    const QPointer<QmlWrapper> guard(this);
    Values plainValues;
    Arguments plainArguments;
    plainArguments.append(nullptr);
    for (int i = 0; i < plain.types.size(); ++i) {
        const bool isUntyped = plain.types[i] == QMetaType::QVariant;
        plainValues.append(isUntyped ? fromQml(*static_cast<QVariant*>(arguments[i + 1]))
                                     : QVariant(plain.types[i], arguments[i + 1]));
    }
    for (int i = 0; i < plain.types.size(); ++i) {
        const bool isUntyped = plain.types[i] == QMetaType::QVariant;
        plainArguments.append(isUntyped ? &plainValues[i] : plainValues[i].data());
    }
    QMetaObject::activate(this, meta.get(), signal, plainArguments.data());
    for (int i = signal + 1; guard && i < m_signals.size() && m_signals[i].isConverted(); ++i) {
        if (!isSignalConnected(meta->method(meta->methodOffset() + i))) {
            continue;
        }
        Values values = plainValues;
        if (!convert(m_signals[i], values)) {
            continue;
        }
        Arguments converted;
        converted.append(nullptr);
        for (QVariant& value : values) {
            converted.append(value.data());
        }
        QMetaObject::activate(this, meta.get(), i, converted.data());
    }
}

void QmlWrapper::callItem(const QmlMethod& slot, void** arguments) const
{
    if (!m_item) {
        return;
    }
    Values values;
    values.resize(slot.types.size());
    Arguments passed;
    passed.append(nullptr); // nobody reads the answer
    for (int i = 0; i < slot.types.size(); ++i) {
        if (slot.itemTypes[i] == QMetaType::QVariant) {
            values[i] = toQml(slot.types[i], arguments[i + 1]);
            passed.append(&values[i]);
        } else {
            passed.append(arguments[i + 1]);
        }
    }
    QMetaObject::metacall(m_item, QMetaObject::InvokeMetaMethod, slot.itemIndex, passed.data());
}

} // namespace norvo
