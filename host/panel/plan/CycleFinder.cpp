// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/CycleFinder.h"

#include <QStringList>

#include <algorithm>
#include <functional>
#include <iterator>
#include <vector>

namespace norvo {

namespace {

/// A connection between known devices.
struct Edge
{
    int connection;
    int from;
    int to;
};
using Edges = std::vector<Edge>;

/// In the order of the file.
Edges edgesOf(const PanelDescription& description)
{
    QHash<QString, int> devices;
    for (int i = 0; i < description.devices.size(); ++i) {
        devices.insert(description.devices[i].id.text, i);
    }
    Edges edges;
    for (int i = 0; i < description.connections.size(); ++i) {
        const ConnectionSetting& setting = description.connections[i];
        const int from = devices.value(setting.from.device.text, -1);
        const int to = devices.value(setting.to.device.text, -1);
        if (from >= 0 && to >= 0) {
            edges.push_back({i, from, to});
        }
    }
    return edges;
}

/// Those of the edges for which `isWanted` is true.
template <class Predicate>
Edges those(const Edges& edges, Predicate isWanted)
{
    Edges wanted;
    std::copy_if(edges.cbegin(), edges.cend(), std::back_inserter(wanted), isWanted);
    return wanted;
}

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

/// Whether a device sends at once what follows from what it is given.
using PassesOn = std::function<bool(int device)>;

/// One walk along all of the edges.
class Walk
{
public:
    Walk(const PanelDescription& description, const Edges& edges, const PassesOn& passesOn)
        : m_description(description),
          m_passesOn(passesOn),
          m_edges(description.devices.size()),
          m_calls(description.devices.size(), kNotSeen),
          m_places(description.devices.size())
    {
        for (const Edge& edge : edges) {
            m_edges[edge.from].push_back(edge);
        }
        for (const Edge& edge : edges) {
            if (m_calls[edge.from] == kNotSeen) {
                enter(edge.from);
            }
            while (!m_path.empty()) {
                takeStep();
            }
        }
    }

    const QHash<int, QString>& cycles() const { return m_cycles; } ///< By connection.
    int multiplier() const { return m_multiplier; }

private:
    static constexpr int kNotSeen = -1;
    static constexpr int kOnThePath = -2;

    void enter(int device)
    {
        m_calls[device] = kOnThePath;
        m_places[device] = m_path.size();
        m_path.push_back({device});
    }

    void takeStep()
    {
        Step& step = m_path.back();
        if (step.edge == m_edges[step.device].size()) {
            leave(step);
            return;
        }
        const Edge& edge = m_edges[step.device][step.edge];
        if (m_calls[edge.to] == kNotSeen) {
            enter(edge.to); // Comes back to this edge.
            return;
        }
        if (m_calls[edge.to] == kOnThePath) {
            m_cycles.insert(edge.connection, cycleOf(m_path, m_places[edge.to], m_description));
        } else {
            const int behind = m_passesOn(edge.to) ? m_calls[edge.to] : 0;
            step.calls = std::min(step.calls + 1 + behind, CycleFinder::kMaxCalls + 1);
        }
        ++step.edge;
    }

    void leave(const Step& step)
    {
        if (step.calls > CycleFinder::kMaxCalls && m_multiplier < 0) {
            m_multiplier = step.device;
        }
        m_calls[step.device] = std::min(step.calls, CycleFinder::kMaxCalls);
        m_path.pop_back();
    }

    const PanelDescription& m_description;
    const PassesOn& m_passesOn;
    std::vector<Edges> m_edges;   ///< By the device that they begin at.
    std::vector<int> m_calls;     ///< Of one value from each device, or one of the two marks.
    std::vector<size_t> m_places; ///< Of the devices on the path.
    Path m_path;
    QHash<int, QString> m_cycles;
    int m_multiplier = -1;
};

} // namespace

CycleFinder::CycleFinder(const PanelDescription& description, const BreaksCycles& breaksCycles)
{
    const Edges all = edgesOf(description);
    const PassesOn passesOn = [&](int device) {
        return !breaksCycles || !breaksCycles(description.devices[device].type.text);
    };
    m_cycles = Walk(description, those(all, [&](const Edge& edge) { return passesOn(edge.from); }),
                    passesOn)
                   .cycles();
    const Walk rest(
        description,
        those(all, [this](const Edge& edge) { return !m_cycles.contains(edge.connection); }),
        passesOn);
    for (auto cycle = rest.cycles().cbegin(); cycle != rest.cycles().cend(); ++cycle) {
        m_cycles.insert(cycle.key(), QString());
    }
    m_multiplier = rest.multiplier();
}

} // namespace norvo
