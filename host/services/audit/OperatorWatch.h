// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/TypeKnowledge.h"
#include "host/panel/plan/PlannedWire.h"

#include <QHash>
#include <QObject>
#include <QVariant>
#include <QVector>

#include <memory>

class BaseDevice;

namespace norvo {

class Node;
class Panel;
struct PanelPlan;

/// Hears what a person does at the controls of a panel: what leaves them while
/// no wire gives them anything. Of a control whose value is kept that value, of
/// others every output.
class OperatorWatch : public QObject
{
    Q_OBJECT

public:
    explicit OperatorWatch(const TypeKnowledge& knowledge) : m_knowledge(knowledge) {}

    /// Once, before the first plan is applied: what the panel's wires give is told from a hand by
    /// what happens before and after it.
    void follow(const Panel& panel);
    void listen(const PanelPlan& plan); ///< Before each plan is applied.
    void complete(const Panel& panel);  ///< Once it is, and the first outputs have left.

signals:
    /// `value` is invalid for a bare pulse.
    void given(QString device, QString output, QVariant value);

private:
    using Ear = std::shared_ptr<QObject>; // Owns taps.

    void beginFrame(const PlannedWire& wire);
    void endFrame(const PlannedWire& wire);
    void count(const PlannedWire& wire, int step, QObject& ear);
    void hear(const Node& node);

    const TypeKnowledge& m_knowledge;
    QHash<QString, BaseDevice*> m_devices;
    QHash<QString, Ear> m_controls;      ///< Their outputs are heard once the plan is applied.
    QMultiHash<PlannedWire, Ear> m_ends; ///< Around the wires that give a control something.
    QHash<QString, int> m_wires;         ///< That give a control something just now.
};

} // namespace norvo
