// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/ValueAxis.h"

#include <QPolygonF>

#include <deque>

/// The values of the last ten seconds, in the order of their times.
class GaugeHistory
{
public:
    static constexpr double kSpanSeconds = 10.0;
    /// With more than these a trace is reduced.
    static constexpr int kMaxWholePoints = 2000;

    bool isEmpty() const { return m_points.empty(); }
    int size() const { return int(m_points.size()); }
    double latestValue() const { return m_points.back().value; } ///< Not for an empty history.

    /// Times are seconds and never go back; a value of the same time as the last one replaces it.
    void insert(double time, double value);
    /// Drops what is older than ten seconds, from the oldest on, up to the first that is younger.
    void prune(double now);

    /// The line through the points, ten seconds to `width` pixels, `now` at the right end. Points
    /// at no number are left out, those beyond any screen drawn no further out than they need be.
    /// Of more points than can be told apart, each pixel keeps its first and last, its
    /// smallest and largest, and those beside them.
    QPolygonF trace(double now, double width, const norvo::ValueAxis& axis) const;

private:
    struct Point
    {
        double time;
        double value;
    };
    using Points = std::deque<Point>;

    std::deque<Point> m_points;
};
