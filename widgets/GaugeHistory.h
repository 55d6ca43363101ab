// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/LumenoGeometry.h"

#include <QPolygonF>

#include <deque>
#include <vector>

/// The values of the last ten seconds, in the order of their times.
class GaugeHistory
{
public:
    static constexpr double kSpanSeconds = 10.0;
    static constexpr double kTraceWidth = 40.0; ///< Pixels.
    /// With more than these a trace is reduced.
    static constexpr int kMaxWholePoints = 2000;

    bool isEmpty() const { return m_size == 0; }
    int size() const { return m_size; }
    double latestValue() const; ///< Not for an empty history.

    /// Times are seconds and never go back; a value of the same time as the last one replaces it.
    void insert(double time, double value);
    /// Drops what is older than ten seconds, from the oldest on, up to the first that is younger.
    void prune(double now);

    /// The line through the points, `now` at the right end. Points at no number are left out, those
    /// beyond any screen drawn no further out than they need be. Of more points than can be told
    /// apart, each pixel keeps its first and last, its smallest and largest, and those beside them.
    QPolygonF trace(double now, const norvo::ValueAxis& axis);

private:
    struct Point
    {
        double time;
        double value;
    };
    /// The points of one pixel. Their shape is kept, as only the newest and oldest change between
    /// two traces, and a search through all points would cost more than the drawing.
    struct Column
    {
        double number;
        std::deque<Point> points; ///< Never none.
        std::vector<Point> shape; ///< Empty: to be found.
    };

    static std::vector<Point> shapeOf(const std::deque<Point>& points);

    std::deque<Column> m_columns;
    int m_size = 0;
};
