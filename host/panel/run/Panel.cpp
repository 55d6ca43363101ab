// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/run/Panel.h"

#include "host/panel/plan/Wiring.h"
#include "host/panel/run/PanelSurface.h"
#include "host/panel/run/QueuedWire.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace norvo {

/// A wire while the panel runs: one of the two.
struct Panel::LiveWire
{
    PlannedWire plan;
    QMetaObject::Connection direct;
    std::unique_ptr<QueuedWire> queued; ///< Where it closes a cycle.
    /// Around the delivery of a value to a device that keeps what an operator gives to it.
    QMetaObject::Connection before;
    QMetaObject::Connection after;
};

namespace {

void report(const Node& node, const QString& what, Diagnostics& diagnostics)
{
    diagnostics.error(
        node.setting().id.place,
        QString("device %1 %2: %3").arg(inQuotes(node.id()), what, node.errors().join("; ")));
}

} // namespace

Panel::Panel(PanelSurface& surface) : m_surface(&surface) {}

Panel::~Panel()
{
    stop();
}

std::vector<Node*> Panel::nodes() const
{
    std::vector<Node*> nodes;
    for (const auto& node : m_nodes) {
        nodes.push_back(node.get());
    }
    return nodes;
}

BaseDevice* Panel::device(const QString& id) const
{
    const Node* const node = m_byId.value(id);
    return node ? node->device() : nullptr;
}

BaseWidget* Panel::widget(const QString& id) const
{
    const Node* const node = m_byId.value(id);
    return node ? node->widget() : nullptr;
}

QHash<QString, Cells> Panel::cells() const
{
    QHash<QString, Cells> cells;
    for (size_t i = 0; i < m_nodes.size(); ++i) {
        if (m_nodes[i]->isShowable()) {
            cells.insert(m_nodes[i]->id(), m_cells[int(i)]);
        }
    }
    return cells;
}

void Panel::stop()
{
    Diagnostics nothing({});
    apply({}, nothing);
}

void Panel::apply(PanelPlan plan, Diagnostics& diagnostics)
{
    endAllBut(plan);
    takeOver(plan);
    if (!plan.isOfPanel) {
        return;
    }
    initialise(diagnostics);
    // Receivers hear a signal in the order in which they were connected. Wires come before widgets,
    // so that the other devices hear a value before the device's own widget reacts to it, and
    // perhaps makes it send the next.
    const QSet<Node*> rewired = connectWires(plan.wires);
    forgetCutWires();
    show(plan, rewired, diagnostics);
    for (const auto& node : m_nodes) {
        node->postInitialise();
    }
    for (const auto& node : m_nodes) {
        node->startKeeping();
    }
}

void Panel::endAllBut(const PanelPlan& plan)
{
    const QSet<Node*> staying(plan.nodes.cbegin(), plan.nodes.cend());
    std::vector<Node*> ending;
    for (auto node = m_nodes.rbegin(); node != m_nodes.rend(); ++node) {
        if (!staying.contains(node->get())) {
            ending.push_back(node->get());
        }
    }
    const auto each = [&ending](void (Node::*step)()) {
        for (Node* node : ending) {
            (node->*step)();
        }
    };
    each(&Node::clearRunning);
    each(&Node::preShutdown);
    cutAllBut(plan.wires, staying);
    each(&Node::deinitialiseWidget);
    each(&Node::deinitialise);
    if (plan.nodes.empty() && m_surface) {
        m_surface->release();
    }
    each(&Node::deleteWidget);
    if (plan.nodes.empty() && m_surface) {
        m_surface->clear();
    }
    for (auto node = m_nodes.rbegin(); node != m_nodes.rend(); ++node) {
        if (!staying.contains(node->get())) {
            node->reset();
        }
    }
}

/// Of the wires that begin at a device the first ones stay, up to where the plan has others: those
/// behind are connected again, so that receivers hear in the plan's order.
void Panel::cutAllBut(const QVector<PlannedWire>& wires, const QSet<Node*>& staying)
{
    QHash<QString, QVector<PlannedWire>> planned;
    for (const PlannedWire& wire : wires) {
        planned[wire.from].append(wire);
    }
    const auto isUnchanged = [&](const PlannedWire& wire) {
        QVector<PlannedWire>& rest = planned[wire.from];
        const bool stays = !rest.isEmpty() && rest.constFirst() == wire &&
                           staying.contains(m_byId.value(wire.from)) &&
                           staying.contains(m_byId.value(wire.to));
        stays ? rest.removeFirst() : rest.clear();
        return stays;
    };
    std::vector<LiveWire> kept;
    std::vector<LiveWire> cut;
    for (LiveWire& wire : m_wires) {
        (isUnchanged(wire.plan) ? kept : cut).push_back(std::move(wire));
    }
    while (!cut.empty()) {
        for (const auto& connection : {cut.back().before, cut.back().direct, cut.back().after}) {
            QObject::disconnect(connection);
        }
        const PlannedWire plan = cut.back().plan;
        cut.pop_back();
        if (staying.contains(m_byId.value(plan.to))) {
            m_cut.append(plan);
        }
        emit this->cut(plan);
    }
    m_wires = std::move(kept);
}

/// A device that stays still names as its far ends what was cut.
void Panel::forgetCutWires()
{
    const auto nameOf = [](const PlannedWire& wire) { return wire.from + '.' + wire.signal; };
    if (m_cut.isEmpty()) {
        return;
    }
    QSet<QString> wired;
    for (const LiveWire& wire : m_wires) {
        wired.insert(wire.plan.to + ' ' + nameOf(wire.plan));
    }
    for (const PlannedWire& wire : qAsConst(m_cut)) {
        if (!wired.contains(wire.to + ' ' + nameOf(wire))) {
            m_byId.value(wire.to)->device()->removeSignal(nameOf(wire));
        }
    }
    m_cut.clear();
}

void Panel::takeOver(PanelPlan& plan)
{
    std::unordered_map<const Node*, std::unique_ptr<Node>> all;
    for (auto* nodes : {&m_nodes, &plan.made}) {
        for (auto& node : *nodes) {
            const Node* const key = node.get();
            all.emplace(key, std::move(node));
        }
    }
    m_nodes.clear();
    m_byId.clear();
    for (size_t i = 0; i < plan.nodes.size(); ++i) {
        Node* const node = plan.nodes[i];
        m_nodes.push_back(std::move(all[node]));
        m_byId.insert(node->id(), node);
        if (node->state() == Node::State::Running) {
            node->takeOver(plan.settings[int(i)]);
        }
        connect(node, &Node::parameterWritten, this, &Panel::parameterWritten,
                Qt::UniqueConnection);
    }
}

void Panel::initialise(Diagnostics& diagnostics)
{
    for (const auto& node : m_nodes) {
        if (node->state() == Node::State::Created && !node->initialise()) {
            report(*node, "did not start", diagnostics);
        }
        if (node->state() == Node::State::Initialised) {
            node->setRunning();
        }
    }
}

/// Connects what is not connected yet. Returns the running devices that have got new wires.
QSet<Node*> Panel::connectWires(const QVector<PlannedWire>& wires)
{
    QHash<QString, int> connected; // by the device that they begin at
    for (const LiveWire& wire : m_wires) {
        ++connected[wire.plan.from];
    }
    QSet<Node*> rewired;
    for (const PlannedWire& wire : wires) {
        if (connected[wire.from]-- > 0) {
            continue;
        }
        Node* const from = m_byId.value(wire.from);
        Node* const to = m_byId.value(wire.to);
        if (!from->isUsable() || !to->isUsable()) {
            continue;
        }
        connectWire(wire, *from, *to);
        if (from->state() == Node::State::Running) {
            rewired.insert(from);
        }
    }
    return rewired;
}

void Panel::connectWire(const PlannedWire& plan, Node& from, Node& to)
{
    Wire wire;
    wire.provider = from.device()->getProvider(plan.signal, wire.signal);
    wire.receiver = to.device()->getReceiver(plan.slot, wire.slot);
    if (!wire.provider || !wire.receiver) {
        return;
    }
    emit connecting(plan);
    LiveWire live{plan, {}, nullptr, {}, {}};
    KeptValue* const kept = to.keptValue();
    const auto type = plan.isQueued ? Qt::QueuedConnection : Qt::AutoConnection;
    if (kept) {
        live.before = norvo::connectWire({wire.provider, wire.signal, kept, "beginWire()"}, type);
    }
    if (plan.isQueued) {
        live.queued = std::make_unique<QueuedWire>(wire);
    } else {
        live.direct = norvo::connectWire(wire, Qt::AutoConnection);
    }
    if (kept) {
        live.after = norvo::connectWire({wire.provider, wire.signal, kept, "endWire()"}, type);
    }
    m_wires.push_back(std::move(live));
    const QString incoming = plan.from + "." + wire.signal;
    if (!to.device()->getIncomingConnections().contains(incoming)) {
        to.device()->addSignal(incoming);
    }
    emit connected(plan);
}

void Panel::show(PanelPlan& plan, const QSet<Node*>& rewired, Diagnostics& diagnostics)
{
    m_cells = plan.cells;
    if (!m_surface) {
        return;
    }
    // One that failed just now may need cells for its tile.
    if (std::any_of(m_nodes.cbegin(), m_nodes.cend(),
                    [](const auto& node) { return node->state() == Node::State::Failed; })) {
        plan.layOut();
        m_cells = plan.cells;
    }
    m_surface->setAreas(plan.areas);
    for (size_t i = 0; i < m_nodes.size(); ++i) {
        Node& node = *m_nodes[i];
        const bool isNew = node.state() == Node::State::Initialised;
        // Its widget is to hear it behind the new wires, as at a start. Of a display that makes no
        // difference, and it would lose what it shows.
        const bool isRenewed = rewired.contains(&node) && node.isControl() && node.widget();
        if (isRenewed) {
            node.renewWidget();
        }
        if (node.isShowable()) {
            showNode(node, plan.cells[int(i)], diagnostics);
        }
        if (isNew || isRenewed) {
            initialiseWidget(node, plan.cells[int(i)]);
        }
    }
    m_surface->endPlacing();
}

/// A widget that cannot show what it is for gives its cells to a tile.
void Panel::initialiseWidget(Node& node, const Cells& cells)
{
    node.initialiseWidget();
    if (node.widget() && !node.errors().isEmpty()) {
        node.deleteWidget();
        m_surface->placeError(node.id(), node.errors().join('\n'), cells);
    }
}

void Panel::showNode(Node& node, const Cells& cells, Diagnostics& diagnostics)
{
    if (!node.widget() && node.state() == Node::State::Initialised && !node.createWidget()) {
        report(node, "is not shown", diagnostics);
    }
    if (node.widget()) {
        m_surface->place(node.widget(), cells);
    } else {
        m_surface->placeError(node.id(), node.errors().join('\n'), cells);
    }
}

} // namespace norvo
