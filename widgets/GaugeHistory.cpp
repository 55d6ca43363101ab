// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GaugeHistory.h"

#include <algorithm>
#include <cmath>

double GaugeHistory::latestValue() const
{
    return m_columns.back().points.back().value;
}

void GaugeHistory::insert(double time, double value)
{
    const double number = std::floor(time * (kTraceWidth / kSpanSeconds));
    if (m_columns.empty() || m_columns.back().number != number) {
        m_columns.push_back({number, {}, {}});
    }
    Column& column = m_columns.back();
    column.shape.clear();
    if (!column.points.empty() && column.points.back().time == time) {
        column.points.back().value = value;
    } else {
        column.points.push_back({time, value});
        ++m_size;
    }
}

void GaugeHistory::prune(double now)
{
    while (!m_columns.empty() && now - m_columns.front().points.front().time > kSpanSeconds) {
        Column& column = m_columns.front();
        column.shape.clear();
        column.points.pop_front();
        --m_size;
        if (column.points.empty()) {
            m_columns.pop_front();
        }
    }
}

std::vector<GaugeHistory::Point> GaugeHistory::shapeOf(const std::deque<Point>& points)
{
    auto smallest = points.begin();
    auto largest = smallest;
    for (auto point = smallest; point != points.end(); ++point) {
        if (point->value < smallest->value || std::isnan(smallest->value)) {
            smallest = point;
        }
        if (point->value > largest->value || std::isnan(largest->value)) {
            largest = point;
        }
    }
    const auto [earlier, later] =
        std::minmax({int(smallest - points.begin()), int(largest - points.begin())});
    const int last = int(points.size()) - 1;
    std::vector<Point> shape;
    int next = 0;
    for (const int kept :
         {0, earlier - 1, earlier, earlier + 1, later - 1, later, later + 1, last}) {
        if (kept >= next && kept <= last) {
            shape.push_back(points[kept]);
            next = kept + 1;
        }
    }
    return shape;
}

QPolygonF GaugeHistory::trace(double now, const norvo::ValueAxis& axis)
{
    QPolygonF line;
    line.reserve(qMin(m_size, kMaxWholePoints));
    const auto append = [&](const Point& point) {
        constexpr double furthest = 1e6;
        const double x = (point.time - now + kSpanSeconds) / kSpanSeconds * kTraceWidth;
        const double y = axis.y(point.value);
        if (!std::isnan(y)) {
            line.append({qBound(-furthest, x, furthest), qBound(-furthest, y, furthest)});
        }
    };
    for (Column& column : m_columns) {
        if (m_size <= kMaxWholePoints) {
            std::for_each(column.points.begin(), column.points.end(), append);
            continue;
        }
        if (column.shape.empty()) {
            column.shape = shapeOf(column.points);
        }
        std::for_each(column.shape.begin(), column.shape.end(), append);
    }
    return line;
}
