// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/ports/PortList.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/editor/EditSession.h"
#include "host/panel/plan/CycleFinder.h"
#include "host/panel/plan/Wiring.h"
#include "host/panel/run/Panel.h"

#include "norvo/BaseDevice.h"

#include <algorithm>

namespace norvo {

namespace {

QString nameOf(const QString& signature)
{
    return signature.section('(', 0, 0).trimmed();
}

QString argumentsOf(const QString& signature)
{
    return signature.mid(signature.indexOf('('));
}

ConnectionSetting connectionOf(const QString& from, const QString& output, const QString& to,
                               const QString& input)
{
    return {{{from, {}}, {output, {}}}, {{to, {}}, {input, {}}}, {{}, {}}};
}

QString meaningIn(const QVector<MethodWords>& words, const QString& signature)
{
    const auto found = std::find_if(words.cbegin(), words.cend(), [&](const MethodWords& one) {
        return one.signature == signature;
    });
    return found == words.cend() ? QString() : found->meaning;
}

/// A type's "wgOutput" beside its "output" is for its own widget; some types list it all the same.
bool isForOwnWidget(const QString& name, const QStringList& signatures)
{
    if (name.size() < 3 || !name.startsWith("wg") || !name[2].isUpper()) {
        return false;
    }
    const QString plain = name[2].toLower() + name.mid(3);
    return std::any_of(signatures.cbegin(), signatures.cend(),
                       [&](const QString& other) { return nameOf(other) == plain; });
}

/// One for each name, in the order of the signatures.
QVector<Port> portsOf(const QStringList& signatures, bool isOutput,
                      const QVector<MethodWords>& words)
{
    QVector<Port> ports;
    QHash<QString, int> places;
    for (const QString& signature : signatures) {
        const QString name = nameOf(signature);
        if (isForOwnWidget(name, signatures)) {
            continue;
        }
        if (!places.contains(name)) {
            places.insert(name, ports.size());
            ports.append({{}, name, isOutput, {}, {}});
        }
        Port& port = ports[places.value(name)];
        port.signatures.append(signature);
        if (port.meaning.isEmpty()) {
            port.meaning = meaningIn(words, signature);
        }
    }
    return ports;
}

const PortSetting* namedPort(const Port& port, const DeviceSetting& device)
{
    const auto found =
        std::find_if(device.ports.cbegin(), device.ports.cend(), [&](const PortSetting& named) {
            return named.isOutput == port.isOutput && named.name.text == port.name;
        });
    return found == device.ports.cend() ? nullptr : &*found;
}

/// What the panel's author has named is what is looked for.
void putNamedFirst(QVector<Port>& ports, const DeviceSetting& device)
{
    for (Port& port : ports) {
        if (const PortSetting* const named = namedPort(port, device)) {
            port.meaning = named->definition.text;
        }
    }
    std::stable_partition(ports.begin(), ports.end(), [&device](const Port& port) {
        return namedPort(port, device) != nullptr;
    });
}

/// Of signals that bring a slot the same, that of the text: it is sent for each value.
QVector<Wire> oneForEachSlot(const QVector<Wire>& wires)
{
    QVector<Wire> chosen;
    for (const Wire& wire : wires) {
        const auto same = std::find_if(chosen.begin(), chosen.end(),
                                       [&wire](const Wire& one) { return one.slot == wire.slot; });
        if (same == chosen.end()) {
            chosen.append(wire);
        } else if (argumentsOf(wire.signal) == "(QString)") {
            *same = wire;
        }
    }
    return chosen;
}

} // namespace

PortList::PortList(const EditSession& session, int except) : m_session(session)
{
    const PanelDescription& panel = session.live().description();
    for (int i = 0; i < panel.devices.size(); ++i) {
        m_places.insert(panel.devices[i].id.text, i);
    }
    for (int i = 0; i < panel.connections.size(); ++i) {
        const ConnectionSetting& one = panel.connections[i];
        if (i != except) {
            m_connected.insert(one.from.device.text + '.' + nameOf(one.from.method.text) + ' ' +
                               one.to.device.text + '.' + nameOf(one.to.method.text));
        }
    }
}

const DeviceSetting* PortList::setting(const QString& device) const
{
    const int place = m_places.value(device, -1);
    return place < 0 ? nullptr : &m_session.live().description().devices[place];
}

const QVector<Port>& PortList::outputs(const QString& device) const
{
    return ports(device).outputs;
}

const QVector<Port>& PortList::inputs(const QString& device) const
{
    return ports(device).inputs;
}

const QVector<Port>& PortList::opposites(const Port& port, const QString& device) const
{
    return port.isOutput ? inputs(device) : outputs(device);
}

const PortList::Ports& PortList::ports(const QString& device) const
{
    const auto known = m_ports.constFind(device);
    if (known != m_ports.constEnd()) {
        return *known;
    }
    const DeviceSetting* const found = setting(device);
    const BaseDevice* const live = m_session.live().panel().device(device);
    Ports made = found && live ? makePorts(*found, *live) : Ports();
    for (QVector<Port>* side : {&made.outputs, &made.inputs}) {
        for (Port& port : *side) {
            port.device = device;
        }
    }
    return *m_ports.insert(device, made);
}

PortList::Ports PortList::makePorts(const DeviceSetting& setting, const BaseDevice& device) const
{
    const QString type = setting.type.text.toLower();
    const bool isOwn = hasMethodsOfItsOwn(setting);
    const auto known = m_portsOfType.constFind(type);
    if (!isOwn && known != m_portsOfType.constEnd()) {
        return *known;
    }
    const TypeWords* const words = m_session.catalogue().words(setting.type.text);
    Ports made{portsOf(device.grabMethods({}, QMetaMethod::Signal, false), true,
                       words ? words->outputs : QVector<MethodWords>()),
               portsOf(device.grabMethods({}, QMetaMethod::Slot, false), false,
                       words ? words->inputs : QVector<MethodWords>())};
    for (QVector<Port>* side : {&made.outputs, &made.inputs}) {
        putNamedFirst(*side, setting);
    }
    if (!isOwn) {
        m_portsOfType.insert(type, made);
    }
    return made;
}

bool PortList::hasMethodsOfItsOwn(const DeviceSetting& setting) const
{
    const TypeWords* const words = m_session.catalogue().words(setting.type.text);
    return !setting.ports.isEmpty() || !words || words->hasLateMethods;
}

/// Ports of equal shape fit the same.
QString PortList::shapeOf(const Port& port) const
{
    const DeviceSetting& device = *setting(port.device);
    const QString type = device.type.text.toLower();
    if (!hasMethodsOfItsOwn(device)) {
        return type + '.' + port.name;
    }
    if (!namedPort(port, device)) {
        return port.device + '.' + port.name;
    }
    QStringList arguments;
    std::transform(port.signatures.cbegin(), port.signatures.cend(), std::back_inserter(arguments),
                   argumentsOf);
    return type + arguments.join(QString());
}

const QVector<PortList::Suffix>& PortList::suffixes(const Port& output, const Port& input) const
{
    const QString key = shapeOf(output) + ' ' + shapeOf(input);
    const auto known = m_suffixes.constFind(key);
    return known != m_suffixes.constEnd() ? *known
                                          : *m_suffixes.insert(key, findSuffixes(output, input));
}

QVector<PortList::Suffix> PortList::findSuffixes(const Port& output, const Port& input) const
{
    BaseDevice* const from = m_session.live().panel().device(output.device);
    BaseDevice* const to = m_session.live().panel().device(input.device);
    if (!from || !to) {
        return {};
    }
    const auto wires = [&](const QString& signal, const QString& slot) {
        return possibleWires(connectionOf(output.device, signal, input.device, slot), *from, *to);
    };
    const QVector<Wire> all = wires(output.name, input.name);
    QVector<Suffix> found;
    for (const Wire& wire : oneForEachSlot(all)) {
        const auto isMeant = [&](const QString& signal, const QString& slot) {
            const QVector<Wire> meant = wires(signal, slot);
            return meant.size() == 1 && meant.constFirst().signal == wire.signal &&
                   meant.constFirst().slot == wire.slot;
        };
        const QString sent = argumentsOf(wire.signal);
        const QString taken = argumentsOf(wire.slot);
        const QString carries = carriedBy(wire.slot);
        if (all.size() == 1) {
            found.append({{}, {}, carries});
        } else if (isMeant(wire.signal, input.name)) {
            found.append({sent, {}, carries});
        } else if (isMeant(output.name, wire.slot)) {
            found.append({{}, taken, carries});
        } else {
            found.append({sent, taken, carries});
        }
    }
    return found;
}

bool PortList::isConnected(const Port& output, const Port& input) const
{
    return m_connected.contains(output.text() + ' ' + input.text());
}

bool PortList::fits(const Port& one, const Port& other) const
{
    const Port& output = one.isOutput ? one : other;
    const Port& input = one.isOutput ? other : one;
    return !isConnected(output, input) && !suffixes(output, input).isEmpty();
}

PortFit PortList::fit(const Port& one, const Port& other) const
{
    const Port& output = one.isOutput ? one : other;
    const Port& input = one.isOutput ? other : one;
    PortFit fit;
    if (isConnected(output, input)) {
        fit.whyNot = tr("%1 is connected to %2 already").arg(output.text(), input.text());
        return fit;
    }
    for (const Suffix& suffix : suffixes(output, input)) {
        fit.choices.append({output.text() + suffix.from, input.text() + suffix.to, suffix.carries});
    }
    if (!fit.isPossible()) {
        fit.whyNot = tr("%1 carries %2, %3 takes %4")
                         .arg(output.text(), output.carries(), input.text(), input.carries());
    }
    return fit;
}

QString PortList::circle(const QString& from, const QString& to) const
{
    const SenseCheck knowledge(m_session.catalogue());
    const auto breaks = [&](const QString& type) { return knowledge.breaksCycles(type); };
    PanelDescription panel;
    panel.devices = m_session.live().description().devices;
    panel.connections = m_session.live().description().connections;
    const CycleFinder before(panel, breaks);
    panel.connections.append(connectionOf(from, {}, to, {}));
    const CycleFinder after(panel, breaks);
    // Which connection of a circle closes it depends on where the file begins to tell it.
    for (int i = panel.connections.size() - 1; i >= 0; --i) {
        if (!after.cycle(i).isEmpty() && before.cycle(i).isEmpty()) {
            return after.cycle(i);
        }
    }
    return {};
}

std::optional<PlannedWire> PortList::wire(const ConnectionSetting& connection) const
{
    const DeviceSetting* const from = setting(connection.from.device.text);
    const DeviceSetting* const to = setting(connection.to.device.text);
    BaseDevice* const sender = m_session.live().panel().device(connection.from.device.text);
    BaseDevice* const receiver = m_session.live().panel().device(connection.to.device.text);
    if (!from || !to || !sender || !receiver) {
        return std::nullopt;
    }
    const auto key = [this](const DeviceSetting& device, const Endpoint& end) {
        return (hasMethodsOfItsOwn(device) ? device.id.text + '.' : device.type.text + ' ') +
               end.method.text;
    };
    const QString both = key(*from, connection.from) + " -> " + key(*to, connection.to);
    if (!m_wires.contains(both)) {
        const QVector<Wire> wires = possibleWires(connection, *sender, *receiver);
        m_wires.insert(both, wires.size() == 1 ? PlannedWire{{}, wires[0].signal, {}, wires[0].slot}
                                               : PlannedWire());
    }
    PlannedWire wire = m_wires.value(both);
    wire.from = from->id.text;
    wire.to = to->id.text;
    return wire.signal.isEmpty() ? std::nullopt : std::optional<PlannedWire>(wire);
}

} // namespace norvo
