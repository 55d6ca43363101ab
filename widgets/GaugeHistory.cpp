#include "widgets/GaugeHistory.h"

#include <algorithm>
#include <cmath>

namespace {

/// Where on the trace a time lies, in pixels from its left end.
struct TimeAxis
{
    double now;
    double width;

    double x(double time) const
    {
        return (time - now + GaugeHistory::kSpanSeconds) / GaugeHistory::kSpanSeconds * width;
    }
    double time(double x) const
    {
        return x / width * GaugeHistory::kSpanSeconds - GaugeHistory::kSpanSeconds + now;
    }
};

void appendPoint(QPolygonF& line, double x, double y)
{
    constexpr double furthest = 1e6;
    if (!std::isnan(y)) {
        line.append({x, qBound(-furthest, y, furthest)});
    }
}

} // namespace

void GaugeHistory::insert(double time, double value)
{
    if (m_points.empty() || time > m_points.back().time) {
        m_points.push_back({time, value});
        return;
    }
    const auto at = std::lower_bound(m_points.begin(), m_points.end(), time,
                                     [](const Point& point, double t) { return point.time < t; });
    if (at->time == time) {
        at->value = value;
    } else {
        m_points.insert(at, {time, value});
    }
}

void GaugeHistory::prune(double now)
{
    while (!m_points.empty() && now - m_points.front().time > kSpanSeconds) {
        m_points.pop_front();
    }
}

QPolygonF GaugeHistory::trace(double now, double width, const ValueAxis& axis) const
{
    const TimeAxis times{now, width};
    QPolygonF line;
    line.reserve(size());
    for (const Point& point : m_points) {
        appendPoint(line, times.x(point.time), axis.y(point.value));
    }
    return line;
}

/// Calls `sink` for the first, the smallest, the largest and the last point, each once, in the
/// order of their times. Values that are no number are neither smallest nor largest.
template <class Sink>
void GaugeHistory::reduceColumn(Points::const_iterator first, Points::const_iterator end, Sink sink)
{
    auto smallest = first;
    auto largest = first;
    for (auto point = first; point != end; ++point) {
        if (point->value < smallest->value || std::isnan(smallest->value)) {
            smallest = point;
        }
        if (point->value > largest->value || std::isnan(largest->value)) {
            largest = point;
        }
    }
    const auto inner = std::minmax(smallest, largest);
    auto previous = end;
    for (const auto& point : {first, inner.first, inner.second, end - 1}) {
        if (point != previous) {
            sink(*point);
            previous = point;
        }
    }
}

QPolygonF GaugeHistory::reducedTrace(double now, double width, const ValueAxis& axis) const
{
    const TimeAxis times{now, width};
    QPolygonF line;
    auto first = m_points.cbegin();
    while (first != m_points.cend()) {
        const double columnEnd = times.time(std::floor(times.x(first->time)) + 1.0);
        auto end = std::lower_bound(first + 1, m_points.cend(), columnEnd,
                                    [](const Point& point, double t) { return point.time < t; });
        reduceColumn(first, end, [&](const Point& point) {
            appendPoint(line, times.x(point.time), axis.y(point.value));
        });
        first = end;
    }
    return line;
}
