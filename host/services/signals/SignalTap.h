// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QVariant>

#include <functional>

class BaseDevice;

namespace norvo {

/// What a signal carries, for the time of the call only. Nothing is copied before it is asked for.
class SignalArguments
{
public:
    SignalArguments(const QMetaMethod& signal, void** values) : m_signal(signal), m_values(values)
    {}

    int count() const { return m_signal.parameterCount(); }
    /// A copy; invalid where there is none of that index, or its type is not known to QMetaType.
    QVariant at(int index) const;

private:
    const QMetaMethod& m_signal;
    void** const m_values; ///< Behind the first one, which is for what a method returns.
};

/// Hears one signal of any object, known by its signature only, in the sender's thread and at once.
/// Without Q_OBJECT: it stands for a method that no meta-object holds.
class SignalTap : public QObject
{
public:
    using Hear = std::function<void(const SignalArguments& arguments)>;

    /// Belongs to `owner`, and hears nothing more once that is gone. Null where `sender` has no
    /// such signal; `signature` is normalised.
    static SignalTap* open(QObject& sender, const QString& signature, Hear hear, QObject& owner);
    /// The same for an output of a device, a name or a full signature, whoever sends it.
    static SignalTap* open(BaseDevice& device, const QString& output, Hear hear, QObject& owner);

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    SignalTap(const QMetaMethod& signal, Hear hear, QObject& owner);

    const QMetaMethod m_signal;
    const Hear m_hear;
};

} // namespace norvo
