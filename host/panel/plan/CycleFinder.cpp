#include "host/panel/plan/CycleFinder.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace norvo {

namespace {

using Nodes = std::vector<int>;

/// The devices in an order in which every arrow taken leads forward; see Pearce and Kelly, "A
/// dynamic topological sort algorithm for directed acyclic graphs". Only the part of the order
/// between the two ends of an arrow is ever looked at.
class ForwardOrder
{
public:
    /// `ranks` is the order to begin with: a place for each device.
    explicit ForwardOrder(Nodes ranks)
        : m_ranks(std::move(ranks)),
          m_next(m_ranks.size()),
          m_previous(m_ranks.size()),
          m_cameFrom(m_ranks.size(), -1)
    {}

    /// Takes the arrow, unless it closes a circle: then the way from its end back to its start.
    Nodes add(int from, int to)
    {
        if (from == to) {
            return {from};
        }
        if (m_ranks[to] < m_ranks[from]) {
            Nodes after = reach(to, m_next,
                                [this, from](int node) { return m_ranks[node] <= m_ranks[from]; });
            const bool closes = std::find(after.cbegin(), after.cend(), from) != after.cend();
            const Nodes way = closes ? wayTo(from) : Nodes();
            forget(after);
            if (closes) {
                return way;
            }
            Nodes before = reach(from, m_previous,
                                 [this, to](int node) { return m_ranks[node] >= m_ranks[to]; });
            forget(before);
            putInFront(std::move(before), std::move(after));
        }
        m_next[from].push_back(to);
        m_previous[to].push_back(from);
        return {};
    }

private:
    /// All nodes within the bound that `start` leads to, nearest first, and itself.
    template <class Bound>
    Nodes reach(int start, const std::vector<Nodes>& links, Bound isWithin)
    {
        Nodes reached{start};
        m_cameFrom[start] = start;
        for (size_t i = 0; i < reached.size(); ++i) {
            for (const int node : links[reached[i]]) {
                if (m_cameFrom[node] < 0 && isWithin(node)) {
                    m_cameFrom[node] = reached[i];
                    reached.push_back(node);
                }
            }
        }
        return reached;
    }

    Nodes wayTo(int node) const
    {
        Nodes way{node};
        while (m_cameFrom[node] != node) {
            node = m_cameFrom[node];
            way.push_back(node);
        }
        std::reverse(way.begin(), way.end());
        return way;
    }

    void forget(const Nodes& nodes)
    {
        for (const int node : nodes) {
            m_cameFrom[node] = -1;
        }
    }

    /// Shares the ranks of both groups out anew, so that all of `before` come before `after`.
    void putInFront(Nodes before, Nodes after)
    {
        const auto byRank = [this](int a, int b) { return m_ranks[a] < m_ranks[b]; };
        std::sort(before.begin(), before.end(), byRank);
        std::sort(after.begin(), after.end(), byRank);
        before.insert(before.end(), after.cbegin(), after.cend());
        Nodes ranks;
        for (const int node : before) {
            ranks.push_back(m_ranks[node]);
        }
        std::sort(ranks.begin(), ranks.end());
        for (size_t i = 0; i < before.size(); ++i) {
            m_ranks[before[i]] = ranks[i];
        }
    }

    Nodes m_ranks;
    std::vector<Nodes> m_next;
    std::vector<Nodes> m_previous;
    Nodes m_cameFrom; ///< While searching: the node before; -1: not reached.
};

struct Edge
{
    int arrow;
    int from;
    int to;
};

std::vector<Edge> edgesOf(const PanelDescription& description)
{
    QHash<QString, int> nodes;
    for (int i = 0; i < description.devices.size(); ++i) {
        nodes.insert(description.devices[i].id.text, i);
    }
    std::vector<Edge> edges;
    for (int i = 0; i < description.connections.size(); ++i) {
        const ConnectionSetting& arrow = description.connections[i];
        const int from = nodes.value(arrow.from.device.text, -1);
        const int to = nodes.value(arrow.to.device.text, -1);
        if (from >= 0 && to >= 0) {
            edges.push_back({i, from, to});
        }
    }
    return edges;
}

/// Ranks in which the arrows lead forward already, but for some of those on circles: a device comes
/// before all that a walk along the arrows reaches from it, depth first.
Nodes firstRanks(int count, const std::vector<Edge>& edges)
{
    std::vector<Nodes> next(count);
    for (const Edge& edge : edges) {
        next[edge.from].push_back(edge.to);
    }
    Nodes ranks(count, -1);
    std::vector<bool> isReached(count, false);
    int rank = count;
    for (int root = 0; root < count; ++root) {
        Nodes path;
        const auto reach = [&path, &isReached](int node) {
            if (!isReached[node]) {
                isReached[node] = true;
                path.push_back(node);
            }
        };
        reach(root);
        while (!path.empty()) {
            Nodes& ahead = next[path.back()];
            if (ahead.empty()) {
                ranks[path.back()] = --rank;
                path.pop_back();
            } else {
                const int node = ahead.back();
                ahead.pop_back();
                reach(node);
            }
        }
    }
    return ranks;
}

} // namespace

CycleFinder::CycleFinder(const PanelDescription& description)
{
    const std::vector<Edge> edges = edgesOf(description);
    ForwardOrder order(firstRanks(description.devices.size(), edges));
    for (const Edge& edge : edges) {
        const Nodes way = order.add(edge.from, edge.to);
        if (way.empty()) {
            continue;
        }
        QStringList ids;
        for (const int node : way) {
            ids.append(description.devices[node].id.text);
        }
        ids.append(ids.constFirst());
        m_ways.insert(edge.arrow, ids);
    }
}

} // namespace norvo
