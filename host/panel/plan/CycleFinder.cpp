// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/CycleFinder.h"

#include <QStringList>

#include <algorithm>
#include <vector>

namespace norvo {

namespace {

struct Edge
{
    int connection;
    int to;
};

/// The connections between known devices, by the device that they begin at.
struct Graph
{
    explicit Graph(const PanelDescription& description) : edges(description.devices.size())
    {
        QHash<QString, int> devices;
        for (int i = 0; i < description.devices.size(); ++i) {
            devices.insert(description.devices[i].id.text, i);
        }
        for (int i = 0; i < description.connections.size(); ++i) {
            const ConnectionSetting& setting = description.connections[i];
            const int from = devices.value(setting.from.device.text, -1);
            const int to = devices.value(setting.to.device.text, -1);
            if (from >= 0 && to >= 0) {
                edges[from].push_back({i, to});
                roots.push_back(from);
            }
        }
    }

    std::vector<std::vector<Edge>> edges;
    std::vector<int> roots; ///< In the order of the file.
};

/// A device on the path that the walk is on.
struct Step
{
    int device;
    size_t edge = 0; ///< The next one to follow.
    int calls = 0;   ///< Of one value, by the edges followed so far.
};
using Path = std::vector<Step>;

/// The devices from that place of the path on, and back to the first of them.
QString cycleOf(const Path& path, size_t begin, const PanelDescription& description)
{
    constexpr size_t kHalf = CycleFinder::kMaxDevicesNamed / 2;
    const size_t size = path.size() - begin;
    QStringList ids;
    for (size_t i = 0; i < size; ++i) {
        if (size > 2 * kHalf && i == kHalf) {
            i = size - kHalf;
            ids.append(QString("(%1 more)").arg(size - 2 * kHalf));
        }
        ids.append(description.devices[path[begin + i].device].id.text);
    }
    ids.append(ids.constFirst());
    return ids.join(" -> ");
}

} // namespace

CycleFinder::CycleFinder(const PanelDescription& description)
{
    constexpr int kNotSeen = -1;
    constexpr int kOnThePath = -2;
    const Graph graph(description);
    std::vector<int> calls(graph.edges.size(), kNotSeen);
    std::vector<size_t> places(graph.edges.size()); // on the path
    for (const int root : graph.roots) {
        Path path;
        const auto enter = [&](int device) {
            calls[device] = kOnThePath;
            places[device] = path.size();
            path.push_back({device});
        };
        if (calls[root] == kNotSeen) {
            enter(root);
        }
        while (!path.empty()) {
            Step& step = path.back();
            if (step.edge == graph.edges[step.device].size()) {
                if (step.calls > kMaxCalls && m_multiplier < 0) {
                    m_multiplier = step.device;
                }
                calls[step.device] = std::min(step.calls, kMaxCalls);
                path.pop_back();
                continue;
            }
            const Edge& edge = graph.edges[step.device][step.edge];
            if (calls[edge.to] == kNotSeen) {
                enter(edge.to); // Comes back to this edge.
                continue;
            }
            if (calls[edge.to] == kOnThePath) {
                m_cycles.insert(edge.connection, cycleOf(path, places[edge.to], description));
            } else {
                step.calls = std::min(step.calls + 1 + calls[edge.to], kMaxCalls + 1);
            }
            ++step.edge;
        }
    }
}

} // namespace norvo
