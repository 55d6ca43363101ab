#include "host/gui/qml/QmlMethods.h"

#include "norvo/DoubleVec.h"

#include <QMetaProperty>
#include <QObject>
#include <QSet>

namespace norvo {

namespace {

using Types = QVector<int>;

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

template <class Wanted>
QmlMethods ownMethods(const QObject& item, Wanted isWanted)
{
    const QMetaObject& meta = *item.metaObject();
    const QMetaObject* const compiled = compiledClass(item);
    const QSet<int> changes = changeSignals(meta, compiled->propertyCount());
    QSet<QByteArray> known;
    QmlMethods methods;
    for (int i = compiled->methodCount(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        // What a document declares anew hides what the one that it is built on had.
        const QMetaMethod newest = meta.method(meta.indexOfMethod(method.methodSignature()));
        const QmlMethod plain = plainMethod(newest);
        if (isWanted(method) && !changes.contains(i) && !known.contains(plain.signature()) &&
            !plain.types.contains(QMetaType::UnknownType)) {
            known.insert(plain.signature());
            methods.append(plain);
        }
    }
    return methods;
}

/// `types` with each untyped one made `type`.
Types typedAs(Types types, int type)
{
    for (int& each : types) {
        each = each == QMetaType::QVariant ? type : each;
    }
    return types;
}

/// The forms in which a signal of these types can be had, besides the plain one.
QVector<Types> convertedSignalForms(const Types& types)
{
    if (!types.contains(QMetaType::QVariant)) {
        return {};
    }
    if (types.size() > 1) {
        return {typedAs(types, QMetaType::Double)};
    }
    return {{qMetaTypeId<DoubleVec>()},
            {QMetaType::Double},
            {QMetaType::QString},
            {QMetaType::Bool},
            {QMetaType::Int}};
}

/// All forms in which a function of these types can be had.
QVector<Types> slotForms(const Types& types)
{
    if (!types.contains(QMetaType::QVariant)) {
        return {types};
    }
    const Types kinds{QMetaType::Double, QMetaType::QString,       QMetaType::Bool,
                      QMetaType::Int,    qMetaTypeId<DoubleVec>(), QMetaType::QByteArray};
    QVector<Types> forms;
    if (types.size() == 1) {
        for (int kind : kinds) {
            forms.append(Types{kind});
        }
    } else {
        forms.append(typedAs(types, QMetaType::Double));
    }
    if (types == Types{QMetaType::QVariant, QMetaType::QVariant}) {
        for (int kind : kinds) { // a value and its sender's name, as displays pass them on
            forms.append(Types{kind, QMetaType::QString});
        }
    }
    forms.append(types);
    return forms;
}

} // namespace

QByteArray QmlMethod::signature() const
{
    QByteArray arguments;
    for (int type : types) {
        arguments += (arguments.isEmpty() ? "" : ",") + QByteArray(QMetaType::typeName(type));
    }
    return name + "(" + arguments + ")";
}

QmlMethods qmlSignals(const QObject& item)
{
    QmlMethods methods;
    const QmlMethods plain = ownMethods(
        item, [](const QMetaMethod& method) { return method.methodType() == QMetaMethod::Signal; });
    for (QmlMethod method : plain) {
        methods.append(method);
        const QVector<Types> forms = convertedSignalForms(method.itemTypes);
        for (const Types& form : forms) {
            method.types = form;
            methods.append(method);
        }
    }
    return methods;
}

QmlMethods qmlSlots(const QObject& item)
{
    QmlMethods methods;
    const QmlMethods plain = ownMethods(item, [](const QMetaMethod& method) {
        return method.methodType() == QMetaMethod::Slot ||
               method.methodType() == QMetaMethod::Method;
    });
    for (QmlMethod method : plain) {
        const QVector<Types> forms = slotForms(method.itemTypes);
        for (const Types& form : forms) {
            method.types = form;
            methods.append(method);
        }
    }
    return methods;
}

} // namespace norvo
