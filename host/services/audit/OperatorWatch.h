// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/TypeKnowledge.h"
#include "host/panel/plan/PlannedWire.h"

#include <QHash>
#include <QObject>
#include <QVariant>
#include <QVector>

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

    /// Before the plan is applied: what a wire gives begins before the wire is
    /// heard.
    void listen(const PanelPlan& plan);
    void complete(const Panel& panel); ///< Once it is applied, and the first
                                       ///< outputs have left.

signals:
    /// `value` is invalid for a bare pulse.
    void given(QString device, QString output, QVariant value);

private:
    void hear(const Node& node);
    void count(BaseDevice& sender, const PlannedWire& wire, int step);

    const TypeKnowledge& m_knowledge;
    QHash<QString, QVector<PlannedWire>> m_incoming; ///< One for each output, by control.
    bool m_isComplete = false;
    QHash<QString, int> m_wires; ///< That give a control something just now.
};

} // namespace norvo
