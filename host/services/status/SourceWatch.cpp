// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/status/SourceWatch.h"

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"

#include <algorithm>
#include <utility>

namespace norvo {

namespace {

const QString kConnected = QStringLiteral("connected(bool)");
const QString kRunning = QStringLiteral("running(bool)");
const QString kFault = QStringLiteral("fault(QString)");

bool hasOutput(BaseDevice& device, const QString& output)
{
    QString signature;
    return device.getProvider(output, signature) != nullptr;
}

/// Of a source itself: what it tells of its state is never stale.
bool tellsState(const PlannedWire& wire)
{
    return wire.signal == kConnected || wire.signal == kRunning || wire.signal == kFault;
}

} // namespace

struct SourceWatch::Watched
{
    Source source;
    QStringList reached; ///< Known once all sources are.
    bool isFaultALoss = false;
    std::unique_ptr<QObject> ear = std::make_unique<QObject>(); ///< Owns the taps.
    QHash<QString, SignalTap*> counted;                         ///< By output.
};

SourceWatch::SourceWatch() = default;
SourceWatch::~SourceWatch() = default;

void SourceWatch::listen(const PanelPlan& plan)
{
    forgetAllBut(plan.kept());
    m_wires.clear();
    for (const PlannedWire& wire : plan.wires) {
        m_wires[wire.from].append(wire);
    }
    for (const Node* const node : plan.nodes) {
        if (Watched* const watched = m_byId.value(node->id())) {
            countValues(*node, *watched);
        }
    }
    m_new.clear();
    for (const auto& node : plan.made) {
        m_new.insert(node->id());
        watch(*node);
    }
}

void SourceWatch::forgetAllBut(const QSet<QString>& devices)
{
    const auto isGone = [&](const std::unique_ptr<Watched>& watched) {
        return !devices.contains(watched->source.id);
    };
    for (const auto& watched : m_watched) {
        if (isGone(watched)) {
            m_byId.remove(watched->source.id);
        }
    }
    m_watched.erase(std::remove_if(m_watched.begin(), m_watched.end(), isGone), m_watched.end());
}

void SourceWatch::complete(const Panel& panel)
{
    QHash<QString, int> order;
    for (const Node* node : panel.nodes()) {
        order.insert(node->id(), order.size());
        Watched* const watched = m_byId.value(node->id());
        if (!watched && m_new.contains(node->id())) {
            watch(*node);
        } else if (watched && node->state() == Node::State::Failed) {
            tellFault(*watched, node->errors().join("; "), true);
        }
    }
    std::sort(m_watched.begin(), m_watched.end(), [&order](const auto& a, const auto& b) {
        return order.value(a->source.id) < order.value(b->source.id);
    });
    findLosses();
    emit changed();
}

void SourceWatch::findLosses()
{
    const QHash<QString, int> before = std::exchange(m_losses, {});
    for (const auto& watched : m_watched) {
        watched->reached = reachedFrom(watched->source.id);
        if (watched->source.state == Source::State::Lost) {
            for (const QString& device : qAsConst(watched->reached)) {
                ++m_losses[device];
            }
        }
    }
    for (auto device = before.cbegin(); device != before.cend(); ++device) {
        if (*device > 0 && !isStale(device.key())) {
            emit staleChanged(device.key(), false);
        }
    }
    const QStringList stale = m_losses.keys();
    for (const QString& device : stale) {
        emit staleChanged(device, true);
    }
}

/// False for a device that is no source.
bool SourceWatch::watch(const Node& node)
{
    BaseDevice* const device = node.device();
    const auto isThere = [device](const QString& output) { return hasOutput(*device, output); };
    const QStringList outputs{kConnected, kRunning, kFault};
    if (!device || std::none_of(outputs.cbegin(), outputs.cend(), isThere)) {
        return false;
    }
    m_watched.push_back(std::make_unique<Watched>());
    Watched& watched = *m_watched.back();
    m_byId.insert(node.id(), &watched);
    watched.source.id = node.id();
    watched.source.since = QDateTime::currentDateTime();
    hearStates(node, watched);
    countValues(node, watched);
    return true;
}

void SourceWatch::hearStates(const Node& node, Watched& watched)
{
    BaseDevice& device = *node.device();
    const QString state = hasOutput(device, kConnected) ? kConnected
                          : hasOutput(device, kRunning) ? kRunning
                                                        : QString();
    watched.isFaultALoss = state.isEmpty();
    if (!state.isEmpty()) {
        SignalTap::open(
            device, state,
            [this, &watched](const SignalArguments& arguments) {
                setState(watched,
                         arguments.at(0).toBool() ? Source::State::Well : Source::State::Lost);
            },
            *watched.ear);
    }
    SignalTap::open(
        device, kFault,
        [this, &watched](const SignalArguments& arguments) {
            tellFault(watched, arguments.at(0).toString(), watched.isFaultALoss);
        },
        *watched.ear);
}

/// Along wires only: an output that nobody hears may not even be computed.
void SourceWatch::countValues(const Node& node, Watched& watched)
{
    QSet<QString> outputs;
    const QVector<PlannedWire> wires = m_wires.value(node.id());
    for (const PlannedWire& wire : wires) {
        if (!tellsState(wire)) {
            outputs.insert(wire.signal);
        }
    }
    const QStringList counted = watched.counted.keys();
    for (const QString& output : counted) {
        if (!outputs.remove(output)) {
            delete watched.counted.take(output);
        }
    }
    for (const QString& output : qAsConst(outputs)) {
        watched.counted[output] = SignalTap::open(
            *node.device(), output,
            [this, &watched](const SignalArguments&) {
                ++watched.source.values;
                if (watched.isFaultALoss && watched.source.state != Source::State::Well) {
                    setState(watched, Source::State::Well);
                }
            },
            *watched.ear);
    }
}

void SourceWatch::tellFault(Watched& watched, const QString& text, bool isLoss)
{
    watched.source.message = text;
    if (isLoss && watched.source.state != Source::State::Lost) {
        setState(watched, Source::State::Lost);
    } else {
        emit changed();
    }
}

void SourceWatch::setState(Watched& watched, Source::State state)
{
    Source& source = watched.source;
    if (source.state == state) {
        return;
    }
    const int change = int(state == Source::State::Lost) - int(source.state == Source::State::Lost);
    source.state = state;
    source.since = QDateTime::currentDateTime();
    for (const QString& device : qAsConst(watched.reached)) {
        const bool wasStale = isStale(device);
        m_losses[device] += change;
        if (isStale(device) != wasStale) {
            emit staleChanged(device, !wasStale);
        }
    }
    emit changed();
}

QStringList SourceWatch::reachedFrom(const QString& id) const
{
    QSet<QString> reached;
    QStringList open{id};
    while (!open.isEmpty()) {
        const QString from = open.takeLast();
        const QVector<PlannedWire> wires = m_wires.value(from);
        for (const PlannedWire& wire : wires) {
            const bool isOfSource = m_byId.contains(wire.to) || (from == id && tellsState(wire));
            if (!isOfSource && !reached.contains(wire.to)) {
                reached.insert(wire.to);
                open.append(wire.to);
            }
        }
    }
    return reached.values();
}

QVector<Source> SourceWatch::sources() const
{
    QVector<Source> sources;
    for (const auto& watched : m_watched) {
        sources.append(watched->source);
    }
    return sources;
}

} // namespace norvo
