// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/audit/OperatorWatch.h"

#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/services/signals/Outputs.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"

#include <QSet>

#include <utility>

namespace norvo {

namespace {

bool isControl(const TypeKnowledge& knowledge, const Node& node)
{
    return node.device() && knowledge.control(node.setting().type.text) != Control::None;
}

} // namespace

void OperatorWatch::follow(const Panel& panel)
{
    connect(&panel, &Panel::connecting, this, &OperatorWatch::beginFrame);
    connect(&panel, &Panel::connected, this, &OperatorWatch::endFrame);
    connect(&panel, &Panel::cut, this, [this](const PlannedWire& wire) {
        const auto end = m_ends.find(wire);
        if (end != m_ends.end()) {
            m_ends.erase(end);
        }
    });
}

void OperatorWatch::listen(const PanelPlan& plan)
{
    const QSet<QString> kept = plan.kept();
    const QHash<QString, Ear> before = std::exchange(m_controls, {});
    m_devices.clear();
    for (const Node* const node : plan.nodes) {
        m_devices.insert(node->id(), node->device());
        if (isControl(m_knowledge, *node)) {
            m_controls.insert(node->id(),
                              kept.contains(node->id()) ? before.value(node->id()) : Ear());
        }
    }
}

void OperatorWatch::beginFrame(const PlannedWire& wire)
{
    if (m_controls.contains(wire.to)) {
        const auto ear = std::make_shared<QObject>();
        m_ends.insert(wire, ear);
        count(wire, 1, *ear);
    }
}

void OperatorWatch::endFrame(const PlannedWire& wire)
{
    const auto begun = m_ends.constFind(wire);
    if (begun != m_ends.constEnd()) { // Of equal ones the one that was begun last.
        count(wire, -1, **begun);
    }
}

/// A queued wire gives its value when the queue comes to it, between these two.
void OperatorWatch::count(const PlannedWire& wire, int step, QObject& ear)
{
    const auto add = [this, to = wire.to, step] { m_wires[to] += step; };
    SignalTap::open(
        *m_devices.value(wire.from), wire.signal,
        [this, add, isQueued = wire.isQueued](const SignalArguments&) {
            if (isQueued) {
                QMetaObject::invokeMethod(this, add, Qt::QueuedConnection);
            } else {
                add();
            }
        },
        ear);
}

void OperatorWatch::complete(const Panel& panel)
{
    for (const Node* node : panel.nodes()) {
        const auto control = m_controls.find(node->id());
        if (control != m_controls.end() && !*control) {
            *control = std::make_shared<QObject>();
            hear(*node);
        }
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
            *m_controls.value(node.id()));
    }
}

} // namespace norvo
