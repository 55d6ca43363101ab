// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/history/GraphMemory.h"

#include "host/panel/plan/Node.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/services/signals/SignalTap.h"
#include "host/plots/KeyTime.h"
#include "host/window/history/CurveFeeder.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <QDateTime>
#include <QTimer>

#include <algorithm>
#include <future>
#include <limits>
#include <map>
#include <utility>

namespace norvo {

namespace {

const QString kPeriod = QStringLiteral("widget/timePeriod");
const QString kTimeout = QStringLiteral("widget/timeout");
const QString kValueOut = QStringLiteral("output(double,QString,double)");
const QString kFillOut = QStringLiteral("outputFill(QString,bool)");
const QString kNameOut = QStringLiteral("outputName(QString,QString)");
constexpr int kMaxRelays = 4;                // In a row.
constexpr std::chrono::seconds kPatience{2}; // For what is read since the start.
constexpr double kHeld = 1e9;                // Seconds: longer than any window.

QString nameOf(const QString& signature)
{
    return signature.section('(', 0, 0);
}

bool hasSignal(const BaseDevice& device, const QString& signature)
{
    return device.metaObject()->indexOfSignal(signature.toLatin1().constData()) >= 0;
}

bool isTimeGraph(const BaseDevice& device)
{
    return device.params().contains(kPeriod) && hasSignal(device, kValueOut);
}

/// Whether what it sends is what it is given: it only says how a graph is to draw it.
bool isCurveRelay(const BaseDevice& device)
{
    return hasSignal(device, "output(double)") && hasSignal(device, "setColor(QString)") &&
           hasSignal(device, "setFilled(bool)");
}

} // namespace

/// A recorded signal that feeds a curve.
struct GraphMemory::Source
{
    QString device;
    QString signal;
    double holdSeconds;
};

struct GraphMemory::Graph
{
    struct Curve
    {
        std::vector<std::future<HistoryService::Answer>> reads;
        double holdSeconds = 0;
    };

    QPointer<Node> node;
    QHash<QString, QVector<Source>> sources; ///< By sender.
    std::map<QString, Curve> waiting;        ///< For the first value of the sender.
    QHash<QString, bool> fills;              ///< By sender, as the graph was told.
    QHash<QString, QString> names;           ///< Likewise; else the sender's own.
    std::unique_ptr<QObject> ear = std::make_unique<QObject>(); ///< Owns the taps.

    QString nameOf(const QString& sender) const { return names.value(sender, sender); }
};

/// What is still to come for one who asked.
struct GraphMemory::Reading
{
    EarlierPoints earlier;
    std::function<void(const EarlierPoints&)> done;
    int missing = 0;

    using Take = std::function<void(const HistoryService::Points&)>;

    static std::function<void(const HistoryService::Answer&)>
    taking(const std::shared_ptr<Reading>& reading, const Take& take)
    {
        return [reading, take](const HistoryService::Answer& answer) {
            if (answer) {
                take(*answer);
            }
            reading->earlier.isReadable = reading->earlier.isReadable && answer;
            reading->end();
        };
    }

    void end()
    {
        if (--missing > 0) {
            return;
        }
        for (EarlierCurve& curve : earlier.curves) {
            std::stable_sort(curve.points.begin(), curve.points.end(),
                             [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); });
        }
        done(earlier);
    }
};

GraphMemory::GraphMemory(HistoryService& history) : m_history(history) {}
GraphMemory::~GraphMemory() = default;

void GraphMemory::listen(const PanelPlan& plan)
{
    const QSet<QString> kept = plan.kept();
    const bool isFirst = m_nodes.isEmpty();
    m_wires = plan.wires;
    m_nodes.clear();
    for (Node* const node : plan.nodes) {
        m_nodes.insert(node->id(), node);
    }
    const auto isGone = [&](const auto& graph) {
        return !graph->node || m_nodes.value(graph->node->id()) != graph->node;
    };
    m_graphs.erase(std::remove_if(m_graphs.begin(), m_graphs.end(), isGone), m_graphs.end());
    for (Node* const node : plan.nodes) {
        if (!node->device() || !isTimeGraph(*node->device())) {
            continue;
        }
        Graph& graph = graphOf(*node);
        const auto before = std::exchange(graph.sources, sourcesOf(node->id()));
        QStringList added = graph.sources.keys();
        for (const QString& sender : before.keys()) {
            added.removeOne(sender);
        }
        if (!isFirst || !kept.contains(node->id())) {
            fill(graph, added);
        }
    }
}

GraphMemory::Graph& GraphMemory::graphOf(Node& node)
{
    if (Graph* const known = find(node.id())) {
        return *known;
    }
    m_graphs.push_back(std::make_unique<Graph>());
    Graph& graph = *m_graphs.back();
    graph.node = &node;
    BaseDevice& device = *node.device();
    SignalTap::open(
        device, kValueOut,
        [this, &graph](const SignalArguments& arguments) { hear(graph, arguments); }, *graph.ear);
    SignalTap::open(
        device, kFillOut,
        [&graph](const SignalArguments& arguments) {
            graph.fills[arguments.at(0).toString()] = arguments.at(1).toBool();
        },
        *graph.ear);
    SignalTap::open(
        device, kNameOut,
        [&graph](const SignalArguments& arguments) {
            graph.names[arguments.at(0).toString()] = arguments.at(1).toString();
        },
        *graph.ear);
    return graph;
}

/// By sender.
QHash<QString, QVector<GraphMemory::Source>> GraphMemory::sourcesOf(const QString& graph) const
{
    QHash<QString, QVector<Source>> sources;
    for (const PlannedWire& wire : m_wires) {
        if (wire.to == graph && nameOf(wire.slot) == "input") {
            sources[wire.from] += sourcesOf(wire, 0);
        }
    }
    return sources;
}

QVector<GraphMemory::Source> GraphMemory::sourcesOf(const PlannedWire& wire, int depth) const
{
    if (const HistorySignal* recorded = m_history.recorded(wire.from, nameOf(wire.signal))) {
        const double every = double(recorded->every.count()) * 0.001;
        return {{wire.from, nameOf(wire.signal), recorded->deadband ? kHeld : every * 2}};
    }
    QVector<Source> sources;
    const Node* const node = m_nodes.value(wire.from);
    if (depth < kMaxRelays && node && node->device() && isCurveRelay(*node->device())) {
        for (const PlannedWire& before : m_wires) {
            if (before.to == wire.from && nameOf(before.slot) == "input") {
                sources += sourcesOf(before, depth + 1);
            }
        }
    }
    return sources;
}

GraphMemory::Graph* GraphMemory::find(const QString& graph) const
{
    for (const auto& one : m_graphs) {
        if (one->node && one->node->id() == graph) {
            return one.get();
        }
    }
    return nullptr;
}

void GraphMemory::fill(const QString& graph)
{
    if (Graph* const found = find(graph)) {
        found->waiting.clear();
        fill(*found, found->sources.keys());
    }
}

bool GraphMemory::remembers(const QString& graph) const
{
    const Graph* const found = find(graph);
    return found && std::any_of(found->sources.cbegin(), found->sources.cend(),
                                [](const auto& sources) { return !sources.isEmpty(); });
}

void GraphMemory::read(const QString& graph, double from, double to, QObject& receiver,
                       std::function<void(const EarlierPoints&)> done)
{
    const auto reading = std::make_shared<Reading>();
    reading->earlier.begin = std::numeric_limits<double>::infinity();
    reading->done = std::move(done);
    if (const Graph* const found = find(graph)) {
        read(*found, from, to, receiver, reading);
    }
    if (reading->missing == 0) {
        QTimer::singleShot(0, &receiver, [reading] { reading->done(reading->earlier); });
    }
}

void GraphMemory::read(const Graph& graph, double from, double to, QObject& receiver,
                       const std::shared_ptr<Reading>& reading)
{
    const auto begin = millisecondsOf(from);
    const auto end = millisecondsOf(to);
    const double timeout = graph.node->device()->getParam(kTimeout);
    const double thinned = 4 * (to - from) / kMaxEarlier;
    QHash<QString, int> count;
    for (auto sender = graph.sources.keyBegin(); sender != graph.sources.keyEnd(); ++sender) {
        ++count[graph.nameOf(*sender)];
    }
    const auto takeFirst = [reading](const HistoryService::Points& points) {
        if (!points.isEmpty()) {
            const double first = keyOf(points.first().time);
            reading->earlier.begin = std::min(reading->earlier.begin, first);
        }
    };
    for (auto sender = graph.sources.cbegin(); sender != graph.sources.cend(); ++sender) {
        EarlierCurve curve{graph.nameOf(sender.key()), {}, std::max(timeout, thinned)};
        if (sender->isEmpty() || count.value(curve.name) > 1) {
            continue;
        }
        const int number = reading->earlier.curves.size();
        const auto take = [reading, number](const HistoryService::Points& points) {
            for (const HistoryPoint& point : points) {
                reading->earlier.curves[number].points.append(
                    {keyOf(point.time), valueOnCurve(point.value)});
            }
        };
        for (const Source& source : *sender) {
            curve.longestPause = std::max(curve.longestPause, source.holdSeconds);
            reading->missing += 2;
            m_history.read({source.device, source.signal, begin, end, kMaxEarlier}, receiver,
                           Reading::taking(reading, take));
            m_history.read({source.device, source.signal, 0, end, 0, true}, receiver,
                           Reading::taking(reading, takeFirst));
        }
        reading->earlier.curves.append(curve);
    }
}

void GraphMemory::fill(Graph& graph, const QStringList& senders)
{
    const double period = graph.node->device()->getParam(kPeriod);
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const qint64 begin = now - millisecondsOf(std::max(period, 0.0));
    // What comes from now on is heard, and would be there twice: the clock of the record may be a
    // millisecond behind.
    const qint64 end = now - 2;
    const double thinned = 4 * period / kMaxPoints; // Between two points, where there are too many.
    for (const QString& sender : senders) {
        for (const Source& source : graph.sources.value(sender)) {
            Graph::Curve& curve = graph.waiting[sender];
            curve.reads.push_back(
                m_history.read({source.device, source.signal, begin, end, kMaxPoints}));
            curve.holdSeconds = std::max({curve.holdSeconds, source.holdSeconds, thinned});
        }
    }
}

/// Before the graph's widget does.
void GraphMemory::hear(Graph& graph, const SignalArguments& arguments)
{
    if (graph.waiting.empty() || !graph.node) {
        return;
    }
    const QString sender = arguments.at(1).toString();
    const auto found = graph.waiting.find(sender);
    BaseWidget* const widget = graph.node->widget();
    if (found == graph.waiting.end() || !widget || !CurveFeeder::canFeed(*widget)) {
        return;
    }
    RememberedCurve curve;
    curve.holdSeconds = found->second.holdSeconds;
    for (auto& read : found->second.reads) {
        if (read.wait_for(kPatience) == std::future_status::ready) {
            curve.points += read.get().value_or(HistoryService::Points());
        }
    }
    if (found->second.reads.size() > 1) {
        std::stable_sort(
            curve.points.begin(), curve.points.end(),
            [](const HistoryPoint& a, const HistoryPoint& b) { return a.time < b.time; });
    }
    graph.waiting.erase(found);

    BaseDevice& device = *graph.node->device();
    const double now = arguments.at(2).toDouble();
    const double period = device.getParam(kPeriod);
    CurveFeeder feeder(*widget, sender, device.getParam(kTimeout));
    feeder.setFilled(graph.fills.value(sender));
    feeder.feed(curve, now - period, now);
    if (graph.fills.value(sender)) { // The value that the graph takes next may begin a new piece.
        QTimer::singleShot(0, widget, [widget, sender] {
            QMetaObject::invokeMethod(widget, "inputFill", Q_ARG(QString, sender),
                                      Q_ARG(bool, true));
        });
    }
}

} // namespace norvo
