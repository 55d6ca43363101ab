#pragma once

#include "host/gui/qml/QmlMethods.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace norvo {

/// Stands for a QML item in the wiring: has a signal and a slot for each form of the item's own
/// methods, passes signals on from the item and calls on to it, and converts on the way.
class QmlWrapper : public QObject
{
public:
    explicit QmlWrapper(QObject& item);
    ~QmlWrapper() override;

    /// Whether `item` has the same methods, so that it can take the place of the item before.
    bool fits(const QObject& item) const;
    /// Stands for `item`, which must fit, from now on; the wires stay.
    void bind(QObject& item);

    /// The signature of the first method of that type that `name`, a method name or a full
    /// signature, asks for; empty when there is none.
    QString resolve(const QString& name, QMetaMethod::MethodType type) const;
    /// All signatures of that type; those of one name where that is not empty.
    QStringList signatures(const QString& name, QMetaMethod::MethodType type) const;

    const QMetaObject* metaObject() const override { return m_meta.get(); }
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    void passOn(int signal, void** arguments);
    void callItem(const QmlMethod& slot, void** arguments) const;

    QPointer<QObject> m_item;
    QmlMethods m_signals;
    QmlMethods m_slots;
    std::shared_ptr<const QMetaObject> m_meta;
};

} // namespace norvo
