// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/PortsDevice.h"

#include "norvo/Readings.h"

#include "norvo/DynamicPorts.h"
#include "norvo/Ids.h"

#include <QHash>
#include <QPointer>

namespace {

enum Form { Number, Text, YesNo, FormCount }; ///< Of an output, in the order of its signals.

const QStringList kOutputForms{"(double)", "(QString)", "(bool)"};
const QStringList kInputForms{"(double)", "(int)", "(bool)", "(QString)", "()"};

} // namespace

struct PortsDevice::Ports
{
    DynamicPorts object;
    QHash<QString, QMetaMethod::MethodType> types; ///< By name.
    QStringList names;                             ///< In the order of their declaration.
    int outputs = 0;
    int inputs = 0;
    bool isBuilt = false;

    void add(const QString& name, QMetaMethod::MethodType type)
    {
        types.insert(name, type);
        names.append(name);
    }

    /// Signatures of the port of that name; none where it is not of that type.
    QStringList signatures(const QString& name, QMetaMethod::MethodType type) const
    {
        QStringList found;
        const auto port = types.constFind(name);
        if (port != types.constEnd() && *port == type) {
            for (const QString& form : type == QMetaMethod::Signal ? kOutputForms : kInputForms) {
                found.append(name + form);
            }
        }
        return found;
    }

    bool isHeard(int signal) const { return isBuilt && object.isHeard(signal); }
};

/// The forms of one value on their way out. A receiver may delete the device, or end its running.
class PortsDevice::Sending
{
public:
    Sending(PortsDevice& device, int output)
        : m_device(&device), m_ports(*device.m_ports), m_firstSignal(output * FormCount)
    {
        Q_ASSERT(output >= 0 && output < m_ports.outputs);
    }

    bool wants(Form form) const
    {
        return m_device && m_device->isRunning() && m_ports.isHeard(m_firstSignal + form);
    }
    template <class Value>
    void send(Form form, const Value& value)
    {
        m_ports.object.send(m_firstSignal + form, value);
    }

private:
    const QPointer<PortsDevice> m_device;
    Ports& m_ports; ///< Of the device.
    const int m_firstSignal;
};

PortsDevice::PortsDevice() : m_ports(std::make_unique<Ports>())
{
    // Displays name a value after the object that sends it.
    connect(this, &QObject::objectNameChanged, &m_ports->object, &QObject::setObjectName);
}

PortsDevice::~PortsDevice() = default;

QString PortsDevice::addOutput(const QString& name, const PortDefinition& definition)
{
    QString error = refusal(name);
    error = error.isEmpty() ? defineOutput(m_ports->outputs, name, definition) : error;
    if (error.isEmpty()) {
        const QByteArray bytes = name.toUtf8();
        m_ports->object.addSignal<double>(bytes);
        m_ports->object.addSignal<QString>(bytes);
        m_ports->object.addSignal<bool>(bytes);
        m_ports->add(name, QMetaMethod::Signal);
        ++m_ports->outputs;
    }
    return error;
}

QString PortsDevice::addInput(const QString& name, const PortDefinition& definition)
{
    QString error = refusal(name);
    const int input = m_ports->inputs;
    error = error.isEmpty() ? defineInput(input, name, definition) : error;
    if (error.isEmpty()) {
        const auto take = [this, input](const QVariant& value) {
            if (isRunning()) {
                receive(input, value);
            }
        };
        const QByteArray bytes = name.toUtf8();
        m_ports->object.addSlot<double>(bytes, [take](double value) { take(value); });
        m_ports->object.addSlot<int>(bytes, [take](int value) { take(value); });
        m_ports->object.addSlot<bool>(bytes, [take](bool value) { take(value); });
        m_ports->object.addSlot<QString>(bytes, [take](const QString& value) { take(value); });
        m_ports->object.addSlot(bytes, [take] { take(QVariant()); });
        m_ports->add(name, QMetaMethod::Slot);
        ++m_ports->inputs;
    }
    return error;
}

/// Why there can be no port of that name.
QString PortsDevice::refusal(const QString& name) const
{
    const QString quoted = '"' + name + '"';
    if (!norvo::isId(name)) {
        return QString("the name %1 holds more than letters, digits, \"_\" and \"-\"").arg(quoted);
    }
    if (m_ports->types.contains(name)) {
        return QString("there is %1 %2 already; a device has each name once")
            .arg(m_ports->types.value(name) == QMetaMethod::Signal ? "an output" : "an input",
                 quoted);
    }
    if (params().contains(name)) {
        return QString("%1 is the name of a parameter of the device; choose another").arg(quoted);
    }
    const QByteArray bytes = name.toUtf8();
    for (int i = 0; i < metaObject()->methodCount(); ++i) {
        if (metaObject()->method(i).name() == bytes) {
            return QString("%1 is the name of an output or input that the device has by itself; "
                           "choose another")
                .arg(quoted);
        }
    }
    if (m_ports->isBuilt || m_ports->types.size() >= kMaxPorts) {
        return m_ports->isBuilt
                   ? QString("the device is connected already")
                   : QString("a device has %1 named outputs and inputs at most").arg(kMaxPorts);
    }
    return {};
}

QObject* PortsDevice::getProvider(const QString& name, QString& signature)
{
    QObject* const ports = find(name, QMetaMethod::Signal, signature);
    return ports ? ports : BaseDevice::getProvider(name, signature);
}

QObject* PortsDevice::getReceiver(const QString& name, QString& signature)
{
    QObject* const ports = find(name, QMetaMethod::Slot, signature);
    return ports ? ports : BaseDevice::getReceiver(name, signature);
}

/// The object that has the port which `name`, a name or a full signature, asks for; else null.
QObject* PortsDevice::find(const QString& name, QMetaMethod::MethodType type, QString& signature)
{
    const QStringList all = m_ports->signatures(name.section('(', 0, 0).trimmed(), type);
    if (all.isEmpty()) {
        return nullptr;
    }
    signature = name.contains('(')
                    ? QString::fromUtf8(QMetaObject::normalizedSignature(name.toUtf8().constData()))
                    : all.constFirst();
    if (!all.contains(signature)) {
        return nullptr;
    }
    if (!m_ports->isBuilt) {
        m_ports->isBuilt = true;
        m_ports->object.build();
    }
    return &m_ports->object;
}

QStringList PortsDevice::grabMethods(const QString& name, QMetaMethod::MethodType type,
                                     bool flag) const
{
    QStringList found = BaseDevice::grabMethods(name, type, flag);
    if (!name.isEmpty()) {
        return found + m_ports->signatures(name, type);
    }
    for (const QString& port : m_ports->names) {
        found += m_ports->signatures(port, type);
    }
    return found;
}

void PortsDevice::sendNumber(int output, double value)
{
    Sending out(*this, output);
    if (out.wants(Number)) {
        out.send(Number, value);
    }
    if (out.wants(Text)) {
        out.send(Text, norvo::numberText(value));
    }
    if ((value == 0 || value == 1) && out.wants(YesNo)) {
        out.send(YesNo, value == 1);
    }
}

void PortsDevice::sendText(int output, const QString& value)
{
    sendText(output, value, value);
}

void PortsDevice::sendText(int output, const QString& value, const QString& number)
{
    Sending out(*this, output);
    const auto read = out.wants(Number) ? norvo::readDouble(number) : std::nullopt;
    if (read) {
        out.send(Number, *read);
    }
    if (out.wants(Text)) {
        out.send(Text, value);
    }
    const auto yes = out.wants(YesNo) ? norvo::readBool(value) : std::nullopt;
    if (yes) {
        out.send(YesNo, *yes);
    }
}

void PortsDevice::sendBool(int output, bool value)
{
    Sending out(*this, output);
    if (out.wants(Number)) {
        out.send(Number, value ? 1.0 : 0.0);
    }
    if (out.wants(Text)) {
        out.send(Text, QString(value ? "true" : "false"));
    }
    if (out.wants(YesNo)) {
        out.send(YesNo, value);
    }
}

bool PortsDevice::isHeard(int output) const
{
    const int first = output * FormCount;
    return m_ports->isHeard(first + Number) || m_ports->isHeard(first + Text) ||
           m_ports->isHeard(first + YesNo);
}

QString PortsDevice::unknownOption(const PortDefinition& definition, const QStringList& known)
{
    for (auto option = definition.options.cbegin(); option != definition.options.cend(); ++option) {
        if (!known.contains(option.key())) {
            return QString("unknown option \"%1\"; %2")
                .arg(option.key(), known.isEmpty()
                                       ? QString("the definition is a text alone")
                                       : "valid names: \"as\", \"" + known.join("\", \"") + '"');
        }
    }
    return {};
}

QString PortsDevice::textOf(const QVariant& value)
{
    return value.userType() == QMetaType::Double ? norvo::numberText(value.toDouble())
                                                 : value.toString();
}
