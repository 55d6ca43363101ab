// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/QmlMethods.h"

#include "norvo/DoubleVec.h"

#include <QMetaProperty>
#include <QObject>
#include <QSet>

namespace norvo {

namespace {

/// The first class of the item that QML did not make.
const QMetaObject* compiledClass(const QObject& item)
{
    const QMetaObject* meta = item.metaObject();
    while (QByteArray(meta->className()).contains("_QML")) {
        meta = meta->superClass();
    }
    return meta;
}

QSet<int> changeSignals(const QMetaObject& meta, int firstProperty)
{
    QSet<int> indexes;
    for (int i = firstProperty; i < meta.propertyCount(); ++i) {
        indexes.insert(meta.property(i).notifySignalIndex());
    }
    return indexes;
}

QmlMethod plainMethod(const QMetaMethod& method)
{
    QmlMethod plain;
    plain.itemIndex = method.methodIndex();
    plain.name = method.name();
    for (int i = 0; i < method.parameterCount(); ++i) {
        plain.itemTypes.append(method.parameterType(i));
    }
    plain.types = plain.itemTypes;
    return plain;
}

QmlMethods ownMethods(const QObject& item, bool signalsWanted)
{
    const QMetaObject& meta = *item.metaObject();
    const QMetaObject* const compiled = compiledClass(item);
    const QSet<int> changes = changeSignals(meta, compiled->propertyCount());
    QmlMethods methods;
    for (int i = compiled->methodCount(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const QByteArray signature = method.methodSignature();
        const bool isSignal = method.methodType() == QMetaMethod::Signal;
        if (isSignal != signalsWanted || changes.contains(i)) {
            continue;
        }
        // What a document declares again hides what the one that it is built on had.
        const QmlMethod plain = plainMethod(meta.method(meta.indexOfMethod(signature)));
        if (!plain.types.contains(QMetaType::UnknownType)) {
            methods.append(plain);
        }
    }
    return methods;
}

QmlMethod as(QmlMethod method, const QVector<int>& types)
{
    method.types = types;
    return method;
}

} // namespace

QmlMethods qmlSignals(const QObject& item)
{
    QmlMethods methods;
    const QmlMethods plainMethods = ownMethods(item, true);
    for (const QmlMethod& plain : plainMethods) {
        methods.append(plain);
        if (plain.types != QVector<int>{QMetaType::QVariant}) {
            continue;
        }
        for (int kind : {qMetaTypeId<DoubleVec>(), int(QMetaType::Double), int(QMetaType::QString),
                         int(QMetaType::Bool), int(QMetaType::Int)}) {
            methods.append(as(plain, {kind}));
        }
    }
    return methods;
}

QmlMethods qmlSlots(const QObject& item)
{
    const QVector<int> value{QMetaType::QVariant};
    const QVector<int> namedValue{QMetaType::QVariant, QMetaType::QVariant};
    QmlMethods methods;
    const QmlMethods plainMethods = ownMethods(item, false);
    for (const QmlMethod& plain : plainMethods) {
        for (int kind :
             {int(QMetaType::Double), int(QMetaType::QString), int(QMetaType::Bool),
              int(QMetaType::Int), qMetaTypeId<DoubleVec>(), int(QMetaType::QByteArray)}) {
            if (plain.types == value) {
                methods.append(as(plain, {kind}));
            } else if (plain.types == namedValue) { // as displays pass values on
                methods.append(as(plain, {kind, QMetaType::QString}));
            }
        }
        methods.append(plain);
    }
    return methods;
}

} // namespace norvo
