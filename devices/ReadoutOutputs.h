#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QString>

/// The four outputs that readouts have in common: a value as number and as text, each without and
/// with the object name of the device that sent it. The named ones are left out when nobody sent
/// the value but called the slot.
///
/// To be called in the device's own input slot, as a friend of it: who sent is what sender() says.
/// Only texts that somebody is connected to are made.
template <class Device>
class ReadoutOutputs
{
public:
    /// A number came: number first.
    static void emitNumber(Device& device, double value)
    {
        static const auto plainText = QMetaMethod::fromSignal(qOverload<QString>(&Device::output));
        static const auto namedText =
            QMetaMethod::fromSignal(qOverload<QString, QString>(&Device::output));

        QString text;
        emit device.output(value);
        if (device.isSignalConnected(plainText)) {
            text = asText(value);
            emit device.output(text);
        }
        if (const QObject* const sender = device.sender()) {
            const QString name = sender->objectName();
            emit device.output(value, name);
            if (device.isSignalConnected(namedText)) {
                emit device.output(text.isEmpty() ? asText(value) : text, name);
            }
        }
    }

    /// A text came: text first. What is no number counts as 0.
    static void emitText(Device& device, const QString& text)
    {
        const double value = text.toDouble();
        emit device.output(text);
        emit device.output(value);
        if (const QObject* const sender = device.sender()) {
            const QString name = sender->objectName();
            emit device.output(text, name);
            emit device.output(value, name);
        }
    }

private:
    static QString asText(double value) { return QString::number(value, 'g', 6); }
};
