// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/audit/OperatorWatch.h"

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/signals/Outputs.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"

#include <QSet>

namespace norvo {

namespace {

bool isControl(const TypeKnowledge& knowledge, const Node& node)
{
    return node.device() && knowledge.control(node.setting().type.text) != Control::None;
}

} // namespace

void OperatorWatch::listen(const PanelPlan& plan)
{
    QHash<QString, Node*> nodes;
    for (Node* node : plan.nodes) {
        nodes.insert(node->id(), node);
    }
    QSet<QString> known;
    for (const PlannedWire& wire : plan.wires) {
        const Node* const from = nodes.value(wire.from);
        const Node* const to = nodes.value(wire.to);
        const QString key = wire.from + '.' + wire.signal + ' ' + wire.to;
        if (from && to && from->device() && isControl(m_knowledge, *to) && !known.contains(key)) {
            known.insert(key);
            m_incoming[wire.to].append(wire);
            count(*from->device(), wire, 1);
        }
    }
}

/// A queued wire gives its value when the queue comes to it, between these two.
void OperatorWatch::count(BaseDevice& sender, const PlannedWire& wire, int step)
{
    const auto add = [this, to = wire.to, step] { m_wires[to] += step; };
    SignalTap::open(
        sender, wire.signal,
        [this, add, isQueued = wire.isQueued](const SignalArguments&) {
            if (!m_isComplete) {
                return; // There is nothing yet to take the count back.
            }
            if (isQueued) {
                QMetaObject::invokeMethod(this, add, Qt::QueuedConnection);
            } else {
                add();
            }
        },
        *this);
}

void OperatorWatch::complete(const Panel& panel)
{
    m_isComplete = true;
    for (const Node* node : panel.nodes()) {
        if (!isControl(m_knowledge, *node)) {
            continue;
        }
        const QVector<PlannedWire> wires = m_incoming.value(node->id());
        for (const PlannedWire& wire : wires) {
            if (BaseDevice* const sender = panel.device(wire.from)) {
                count(*sender, wire, -1);
            }
        }
        hear(*node);
    }
}

void OperatorWatch::hear(const Node& node)
{
    const auto kept = m_knowledge.keptMethods(node.setting().type.text);
    const QStringList outputs = kept ? QStringList(kept->output) : tellingOutputs(*node.device());
    for (const QString& output : outputs) {
        SignalTap::open(
            *node.device(), output,
            [this, id = node.id(), output](const SignalArguments& arguments) {
                if (m_wires.value(id) <= 0) {
                    emit given(id, output, arguments.at(0));
                }
            },
            *this);
    }
}

} // namespace norvo
