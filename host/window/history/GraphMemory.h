// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PlannedWire.h"
#include "host/services/history/HistoryService.h"
#include "host/plots/EarlierPoints.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

namespace norvo {

class Node;
class SignalArguments;
struct PanelPlan;

/// Gives time graphs what the history holds of their window, as if the panel had run all the time.
///
/// A curve begins with the first value of its sender, as ever. Just before the graph takes that
/// value, its own input is given the recorded ones in their order: so its own rules name, colour,
/// break and drop them, and nothing of it is touched. A time graph is what passes values on as
/// output(double,QString,double) and has a parameter "widget/timePeriod".
class GraphMemory : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMaxPoints = 100000; ///< Of a curve; more are thinned out.
    static constexpr int kMaxEarlier = 4000;  ///< Of a curve in one read(), likewise.

    explicit GraphMemory(HistoryService& history); ///< Which outlives it.
    ~GraphMemory() override;

    /// Before each plan is applied, and once the history listens to it. A graph that runs on keeps
    /// its curves; only those that are new to it are filled.
    void listen(const PanelPlan& plan);
    /// Once more, for a graph that shows nothing yet, as after its widget was made anew.
    void fill(const QString& graph);

    bool remembers(const QString& graph) const; ///< Anything of it.
    /// What it held between two times, in seconds since the epoch, beside the panel's thread; later
    /// calls `done` unless `receiver` is gone, even where there is nothing to read. Two curves of
    /// one name cannot be told apart: neither is read.
    void read(const QString& graph, double from, double to, QObject& receiver,
              std::function<void(const EarlierPoints&)> done);

private:
    struct Source;
    struct Graph;
    struct Reading;

    QVector<Source> sourcesOf(const PlannedWire& wire, int depth) const;
    QHash<QString, QVector<Source>> sourcesOf(const QString& graph) const;
    Graph& graphOf(Node& node);
    Graph* find(const QString& graph) const;
    void fill(Graph& graph, const QStringList& senders);
    void read(const Graph& graph, double from, double to, QObject& receiver,
              const std::shared_ptr<Reading>& reading);
    void hear(Graph& graph, const SignalArguments& arguments);

    HistoryService& m_history;
    QVector<PlannedWire> m_wires;
    QHash<QString, QPointer<Node>> m_nodes;
    std::vector<std::unique_ptr<Graph>> m_graphs;
};

} // namespace norvo
