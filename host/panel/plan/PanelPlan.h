// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/TypeKnowledge.h"
#include "host/panel/plan/HeardSignal.h"
#include "host/panel/plan/Node.h"
#include "host/panel/plan/Placement.h"
#include "host/panel/plan/PlannedWire.h"
#include "host/panel/plan/SavedState.h"

#include <QSet>

#include <memory>
#include <vector>

class BaseDevice;
class DeviceManager;

namespace norvo {

/// The error about a type that no plug-in has, with the nearest known one.
QString unknownType(const QString& type, const DeviceManager& manager);
/// The error about a parameter that the device does not have.
QString unknownParam(const QString& type, const QString& name, const BaseDevice& device);

/// What a description means with the device types at hand: the check prints what making it has
/// reported, and Panel::apply() runs it. An empty plan ends a panel.
struct PanelPlan
{
    bool isOfPanel = false; ///< Else it ends one: a panel without devices has a page, too.
    std::vector<std::unique_ptr<Node>> made; ///< Devices that are new.
    std::vector<Node*> nodes;                ///< All, in the order of the file.
    QVector<DeviceSetting> settings;         ///< One for each node: what the file says of it.
    QStringList pages;                       ///< Tabs that the file lists.
    QStringList areas;                       ///< All tabs; empty: none.
    QVector<Cells> cells;            ///< One for each node; means nothing for one not shown.
    QVector<PlannedWire> wires;      ///< In the order of the file.
    QVector<PlannedAlarm> alarms;    ///< In the order of the file.
    QVector<PlannedHistory> history; ///< In the order of the file.

    /// Makes each device once, gives it its parameters, and resolves connections and cells. Where
    /// a type's methods are known no sooner than after initialise(), or `knowledge` says that it
    /// starts nothing, the device is initialised here and stays so; that it fails is an error of
    /// this device. A node of `running` that has an equal setting is taken over instead; it is
    /// checked as a new one, and is not changed before the plan is applied.
    ///
    /// What included files name is found from the panel's folder, whoever reads the panel.
    ///
    /// Saved values reach only the parameters that a device keeps by itself; all others are left
    /// aside with a warning.
    static PanelPlan make(const PanelDescription& description, const DeviceManager& manager,
                          const SavedState& saved, Diagnostics& diagnostics,
                          const std::vector<Node*>& running = {},
                          const TypeKnowledge& knowledge = {});

    /// The ids of those that run on; others of the nodes are new, even under an id that was there.
    QSet<QString> kept() const
    {
        QSet<QString> ids;
        for (const Node* node : nodes) {
            ids.insert(node->id());
        }
        for (const auto& node : made) {
            ids.remove(node->id());
        }
        return ids;
    }

    /// Gives cells to all nodes that are to be seen. To be called again when one that has no
    /// widget has failed, and needs a tile.
    Placement layOut();
};

} // namespace norvo
