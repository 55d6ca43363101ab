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
};

void appendPoint(QPolygonF& line, double x, double y)
{
    constexpr double furthest = 1e6;
    if (!std::isnan(y)) {
        line.append({qBound(-furthest, x, furthest), qBound(-furthest, y, furthest)});
    }
}

} // namespace

void GaugeHistory::insert(double time, double value)
{
    if (m_points.empty() || time > m_points.back().time) {
        m_points.push_back({time, value});
        return;
    }
    if (time == m_points.back().time) {
        m_points.back().value = value;
        return;
    }
    m_columns.clear();
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

double GaugeHistory::columnOf(const Point& point) const
{
    return std::floor(point.time / m_columnSeconds);
}

GaugeHistory::Points::const_iterator GaugeHistory::endOfColumn(double number) const
{
    return std::partition_point(m_points.cbegin(), m_points.cend(),
                                [&](const Point& point) { return columnOf(point) <= number; });
}

/// The first, the smallest, the largest and the last point, each once, in the order of their times.
/// Values that are no number are neither smallest nor largest.
GaugeHistory::Column GaugeHistory::reduced(Points::const_iterator first,
                                           Points::const_iterator end) const
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
    Column column{columnOf(*first), {}};
    const auto [earlier, later] = std::minmax(smallest, largest);
    for (const auto& point : {first, earlier, later, end - 1}) {
        if (column.points.isEmpty() || column.points.last().time != point->time) {
            column.points.append(*point);
        }
    }
    return column;
}

void GaugeHistory::bringColumnsUpToDate()
{
    const double oldest = columnOf(m_points.front());
    while (!m_columns.empty() && m_columns.front().number <= oldest) {
        m_columns.pop_front();
    }
    if (!m_columns.empty()) {
        m_columns.pop_back();
    }
    const auto endOfOldest = endOfColumn(oldest);
    auto first = m_columns.empty() ? endOfOldest : endOfColumn(m_columns.back().number);
    m_columns.push_front(reduced(m_points.cbegin(), endOfOldest));
    while (first != m_points.cend()) {
        const auto end = endOfColumn(columnOf(*first));
        m_columns.push_back(reduced(first, end));
        first = end;
    }
}

QPolygonF GaugeHistory::reducedTrace(double now, double width, const ValueAxis& axis)
{
    QPolygonF line;
    if (m_points.empty()) {
        return line;
    }
    if (m_columnSeconds != kSpanSeconds / width) {
        m_columnSeconds = kSpanSeconds / width;
        m_columns.clear();
    }
    bringColumnsUpToDate();
    const TimeAxis times{now, width};
    for (const Column& column : m_columns) {
        for (const Point& point : column.points) {
            appendPoint(line, times.x(point.time), axis.y(point.value));
        }
    }
    return line;
}
