// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QByteArray>
#include <QMetaMethod>
#include <QMetaType>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <functional>
#include <utility>

/// An object whose signals and slots are named while the program runs.
///
/// First the ports are declared, then build() makes them known to Qt: from there on they are found,
/// connected, disconnected and called by name as those of any other object, queued as well. Types
/// are those of Qt's meta-type system. A slot may delete the object that it belongs to.
class NORVO_EXPORT DynamicPorts : public QObject
{
public:
    /// Does a slot's work; the values stand from `arguments[1]` on, each by its address.
    using Slot = std::function<void(void** arguments)>;

    DynamicPorts();
    ~DynamicPorts() override;

    /// Declares the signal `name(types)`. Returns its number for activate(), counted from 0; -1,
    /// and nothing is declared, when there is such a method already, when a type is not known to
    /// Qt, or after build().
    int addSignal(const QByteArray& name, const QVector<int>& types);
    /// The same for a slot; false where addSignal() gives -1.
    bool addSlot(const QByteArray& name, const QVector<int>& types, Slot slot);
    void build(); ///< Once.

    template <class... Values>
    int addSignal(const QByteArray& name)
    {
        return addSignal(name, QVector<int>{qMetaTypeId<Values>()...});
    }
    /// `slot` takes the values themselves, each by constant reference or by value.
    template <class... Values, class Function>
    bool addSlot(const QByteArray& name, Function slot)
    {
        return addSlot(name, QVector<int>{qMetaTypeId<Values>()...},
                       [slot](void** arguments) mutable {
                           call<Values...>(slot, arguments, std::index_sequence_for<Values...>());
                       });
    }

    /// Emits a signal. `arguments[1]` and what follows are the addresses of values of its types.
    void activate(int signal, void** arguments);
    /// The same with the values themselves, which must be of the signal's types.
    template <class... Values>
    void send(int signal, const Values&... values)
    {
        Q_ASSERT(carries(signal, {qMetaTypeId<Values>()...}));
        void* arguments[] = {nullptr, const_cast<void*>(static_cast<const void*>(&values))...};
        activate(signal, arguments);
    }
    bool isHeard(int signal) const; ///< Whether it is connected to anything.

    /// The normalised signatures of the methods of that type, in the order of declaration; those
    /// of one name where that is not empty.
    QStringList signatures(const QString& name, QMetaMethod::MethodType type) const;
    /// That of the first method of that type which `name`, a method name or a full signature, asks
    /// for; empty when there is none.
    QString signatureOf(const QString& name, QMetaMethod::MethodType type) const;

    const QMetaObject* metaObject() const override; ///< Until build() that of QObject.
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    struct Table;

    template <class... Values, class Function, std::size_t... Index>
    static void call(Function& slot, void** arguments, std::index_sequence<Index...>)
    {
        Q_UNUSED(arguments)
        slot(*static_cast<const Values*>(arguments[Index + 1])...);
    }
    bool carries(int signal, const QVector<int>& types) const;

    Table* const m_table; ///< Outlives this object while one of its slots is at work.
};
