// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GaugeHistory.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Appends to the line what of the points from `first` to before `end` makes its shape.
template <class Iterator, class Append>
void appendShape(Iterator first, Iterator end, const Append& append)
{
    auto smallest = first;
    auto largest = first;
    double least = std::numeric_limits<double>::infinity();
    double most = -least;
    for (auto point = first; point != end; ++point) {
        if (point->value < least) { // Never of what is no number.
            least = point->value;
            smallest = point;
        }
        if (point->value > most) {
            most = point->value;
            largest = point;
        }
    }
    const int last = int(end - first) - 1;
    const auto [earlier, later] = std::minmax({int(smallest - first), int(largest - first)});
    int next = 0;
    for (const int i : {0, earlier - 1, earlier, earlier + 1, later - 1, later, later + 1, last}) {
        if (i >= next && i <= last) {
            append(first[i]);
            next = i + 1;
        }
    }
}

} // namespace

void GaugeHistory::insert(double time, double value)
{
    if (!m_points.empty() && m_points.back().time == time) {
        m_points.back().value = value;
    } else {
        m_points.push_back({time, value});
    }
}

void GaugeHistory::prune(double now)
{
    while (!m_points.empty() && now - m_points.front().time > kSpanSeconds) {
        m_points.pop_front();
    }
}

QPolygonF GaugeHistory::trace(double now, double width, const norvo::ValueAxis& axis) const
{
    QPolygonF line;
    const auto append = [&](const Point& point) {
        constexpr double furthest = 1e6;
        const double x = (point.time - now + kSpanSeconds) / kSpanSeconds * width;
        const double y = axis.y(point.value);
        if (!std::isnan(y)) {
            line.append({qBound(-furthest, x, furthest), qBound(-furthest, y, furthest)});
        }
    };
    if (size() <= kMaxWholePoints) {
        line.reserve(size());
        std::for_each(m_points.begin(), m_points.end(), append);
        return line;
    }
    const double pixel = kSpanSeconds / width; // In seconds.
    const auto column = [&](const Point& point) { return std::floor(point.time / pixel); };
    for (auto first = m_points.begin(); first != m_points.end();) {
        const auto end = std::partition_point(
            first, m_points.end(),
            [&, number = column(*first)](const Point& point) { return column(point) <= number; });
        appendShape(first, end, append);
        first = end;
    }
    return line;
}
