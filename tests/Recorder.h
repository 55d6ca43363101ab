// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"

#include <QMetaMethod>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// Notes what one or more objects emit, in the order of emission across all their signals, as it
/// would be written in code: `output(2.5)`, `output("2.5")`, `timeoutAlert()`.
class Recorder : public QObject
{
public:
    /// Listens to the signals that the classes below BaseDevice declare.
    explicit Recorder(QObject* sender) { listen(sender); }

    /// `base` is the last class whose signals are left out.
    Recorder(QObject* sender, const QMetaObject& base) { listen(sender, base); }

    void listen(QObject* sender, const QMetaObject& base = BaseDevice::staticMetaObject)
    {
        const QMetaObject* meta = sender->metaObject();
        for (int i = base.methodCount(); i < meta->methodCount(); ++i) {
            const QMetaMethod method = meta->method(i);
            if (method.methodType() != QMetaMethod::Signal) {
                continue;
            }
            const int slot = QObject::staticMetaObject.methodCount() + m_signals.size();
            m_signals.append(method);
            QMetaObject::connect(sender, i, this, slot, Qt::DirectConnection, nullptr);
        }
    }

    int count() const { return m_events.size(); }

    /// What was emitted since the last call.
    QStringList take()
    {
        QStringList events;
        events.swap(m_events);
        return events;
    }

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod) {
            return id;
        }
        const QMetaMethod& method = m_signals.at(id);
        QStringList texts;
        for (int i = 0; i < method.parameterCount(); ++i) {
            texts.append(asText(QVariant(method.parameterType(i), arguments[i + 1])));
        }
        m_events.append(QString::fromLatin1(method.name()) + "(" + texts.join(", ") + ")");
        return -1;
    }

private:
    static QString asText(const QVariant& value)
    {
        switch (value.userType()) {
        case QMetaType::QString:
            return "\"" + value.toString() + "\"";
        case QMetaType::Double:
            return QString::number(value.toDouble(), 'g', 12);
        default:
            return value.toString();
        }
    }

    QVector<QMetaMethod> m_signals;
    QStringList m_events;
};
