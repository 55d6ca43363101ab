// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PanelPlan.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <memory>
#include <vector>

class BaseDevice;
class BaseWidget;

namespace norvo {

class PanelSurface;

/// A running panel: owns its devices, their widgets and the wires between them, and leads them
/// through their lives. All devices take each step before any takes the next.
///
/// It runs what can run: a device that failed leaves a tile in its place, a connection from or to
/// one is not made.
class Panel : public QObject
{
    Q_OBJECT

public:
    explicit Panel(PanelSurface& surface); ///< The surface may be deleted before the panel.
    ~Panel() override;                     ///< Stops.

    bool isStarted() const { return !m_nodes.empty(); }
    std::vector<Node*> nodes() const; ///< In the order of the file.
    /// Null where there is none of that id, or where the panel is not started.
    BaseDevice* device(const QString& id) const;
    /// Null likewise, and for a device that has no widget or did not start.
    BaseWidget* widget(const QString& id) const;
    QHash<QString, Cells> cells() const; ///< By id, of each device or tile that is seen.

    /// Ends what the plan does not hold, in reverse order, and starts what it holds in addition. A
    /// start is the first plan, a stop the empty one; a plan that was made with nodes() lets those
    /// with equal settings run on, perhaps in other cells. Reports devices that fail at it.
    void apply(PanelPlan plan, Diagnostics& diagnostics);
    void stop(); ///< Applies the empty plan. Leaves the surface empty.

signals:
    /// A device has changed one of the parameters that it keeps, or an operator its value, while it
    /// was running.
    void parameterWritten(QString device, QString param, QString value);
    /// Before a wire is connected, once it is, and once it is cut: what is connected at the one and
    /// the other hears each value before it arrives and after.
    void connecting(const norvo::PlannedWire& wire);
    void connected(const norvo::PlannedWire& wire);
    void cut(const norvo::PlannedWire& wire);

private:
    struct LiveWire;

    void endAllBut(const PanelPlan& plan);
    void cutAllBut(const QVector<PlannedWire>& wires, const QSet<Node*>& staying);
    void forgetCutWires();
    void takeOver(PanelPlan& plan);
    void initialise(Diagnostics& diagnostics);
    QSet<Node*> connectWires(const QVector<PlannedWire>& wires);
    void connectWire(const PlannedWire& wire, Node& from, Node& to);
    void show(PanelPlan& plan, const QSet<Node*>& rewired, Diagnostics& diagnostics);
    void showNode(Node& node, const Cells& cells, Diagnostics& diagnostics);
    void initialiseWidget(Node& node, const Cells& cells);

    QPointer<PanelSurface> m_surface;
    std::vector<std::unique_ptr<Node>> m_nodes; ///< In the order of the file.
    QVector<Cells> m_cells;                     ///< One for each.
    QHash<QString, Node*> m_byId;
    std::vector<LiveWire> m_wires; ///< In the order in which they were connected.
    QVector<PlannedWire> m_cut;    ///< Just now, of devices that stay.
};

} // namespace norvo
