// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/PortsDevice.h"

#include <QtTest>

#include <functional>

/// Notes the forms of the outputs in the order in which they come.
class Listener : public QObject
{
    Q_OBJECT

public:
    void listenTo(PortsDevice& device, const QString& output)
    {
        for (const char* form : {"(double)", "(QString)", "(bool)"}) {
            QString signature;
            QObject* const provider = device.getProvider(output + form, signature);
            QVERIFY(provider);
            QVERIFY(QObject::connect(provider, ("2" + signature.toUtf8()).constData(), this,
                                     (QByteArray("1take") + form).constData()));
        }
    }

    QStringList notes;
    QString senderName;
    std::function<void()> onNote;

public slots:
    void take(double value) { note("number " + QString::number(value, 'g', 17)); }
    void take(QString value) { note("text " + value); }
    void take(bool value) { note(value ? "yes" : "no"); }

private:
    void note(const QString& text)
    {
        notes.append(text);
        senderName = sender()->objectName();
        if (onNote) {
            onNote();
        }
    }
};

/// Sends values of every kind that an input takes.
class Sender : public QObject
{
    Q_OBJECT

public:
    void sendTo(PortsDevice& device, const QString& input,
                Qt::ConnectionType type = Qt::AutoConnection)
    {
        for (const char* form : {"(double)", "(int)", "(bool)", "(QString)", "()"}) {
            QString signature;
            QObject* const receiver = device.getReceiver(input + form, signature);
            QVERIFY(receiver);
            QVERIFY(QObject::connect(this, (QByteArray("2value") + form).constData(), receiver,
                                     ("1" + signature.toUtf8()).constData(), type));
        }
    }

signals:
    void value(double value);
    void value(int value);
    void value(bool value);
    void value(QString value);
    void value();
};
