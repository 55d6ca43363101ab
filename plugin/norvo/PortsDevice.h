// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/PortDefinition.h"

#include <QVariant>

#include <memory>

/// A device whose outputs and inputs the panel's author names.
///
/// An output `x` leaves as x(double), x(QString) and x(bool), each only when the value reads as
/// such; an input `x` takes double, int, bool, QString and a pulse. What they mean is up to the
/// class below. Values go in and out only while the device is running.
class NORVO_EXPORT PortsDevice : public BaseDevice
{
    Q_OBJECT

public:
    static constexpr int kMaxPorts = 5000; ///< Outputs and inputs of one device.

    PortsDevice();
    ~PortsDevice() override;

    /// Declares an output. The host calls this once the parameters are set, before initialise(), in
    /// the order of the panel file, and after the inputs. Returns what is wrong, and the device is
    /// as before, or an empty text. A name is an id, and belongs to no other output, input,
    /// parameter, signal or slot of the device.
    QString addOutput(const QString& name, const PortDefinition& definition);
    QString addInput(const QString& name, const PortDefinition& definition); ///< The same.

    QObject* getProvider(const QString& name, QString& signature) override;
    QObject* getReceiver(const QString& name, QString& signature) override;
    QStringList grabMethods(const QString& name, QMetaMethod::MethodType type,
                            bool flag) const override;

protected:
    /// Takes the definition of output number `output`; they count from 0. Returns what is wrong,
    /// and its number is used again, or an empty text. Parameters can be read.
    virtual QString defineOutput(int output, const QString& name,
                                 const PortDefinition& definition) = 0;
    virtual QString defineInput(int input, const QString& name,
                                const PortDefinition& definition) = 0;
    /// A value has come: a double, int, bool or QString; invalid for a pulse. May delete the
    /// device.
    virtual void receive(int input, const QVariant& value) = 0;

    /// Each leaves in the forms that it reads as, and that somebody hears; texts as Param reads
    /// them. A receiver may delete the device.
    void sendNumber(int output, double value);
    void sendText(int output, const QString& value);
    /// The same for a text that writes the decimal point in another way: `number` is how it reads.
    void sendText(int output, const QString& value, const QString& number);
    void sendBool(int output, bool value);
    /// Whether the output is connected to anything: what nobody hears needs no poll.
    bool isHeard(int output) const;

    /// What is wrong with the options of the definition if it may have these; else empty.
    static QString unknownOption(const PortDefinition& definition, const QStringList& known);
    /// A value as receive() gets it: "2.5", "1000000", "true"; empty for a pulse.
    static QString textOf(const QVariant& value);

private:
    struct Ports;
    class Sending;

    QString refusal(const QString& name) const;
    QObject* find(const QString& name, QMetaMethod::MethodType type, QString& signature);

    const std::unique_ptr<Ports> m_ports;
};
