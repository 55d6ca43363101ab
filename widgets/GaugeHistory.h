#pragma once

#include <QPolygonF>
#include <QVarLengthArray>

#include <deque>

/// The values of the last ten seconds, in the order of their times.
class GaugeHistory
{
public:
    static constexpr double kSpanSeconds = 10.0;

    /// What turns a value into a height in pixels.
    struct ValueAxis
    {
        double base;  ///< Height of `min`.
        double min;   ///< Value at the base.
        double range; ///< From `min` to the value at the other end.
        double span;  ///< Pixels of that range, upwards: heights shrink as values grow.

        double y(double value) const { return base - (value - min) / range * span; }
    };

    bool isEmpty() const { return m_points.empty(); }
    int size() const { return int(m_points.size()); }
    double latestValue() const { return m_points.back().value; } ///< Not for an empty history.

    /// Times are seconds. A value of the same time as one that is there replaces it.
    void insert(double time, double value);
    /// Drops what is older than ten seconds, from the oldest on, up to the first that is younger.
    void prune(double now);

    /// The line through all points, ten seconds to `width` pixels, `now` at the right end. Points
    /// at no number are left out, those beyond any screen drawn no further out than they need be.
    QPolygonF trace(double now, double width, const ValueAxis& axis) const;
    /// The same line with at most four points for each column of time as wide as a pixel: its
    /// first, smallest, largest and last value. Looks at new points alone where it can.
    QPolygonF reducedTrace(double now, double width, const ValueAxis& axis);

private:
    struct Point
    {
        double time;
        double value;
    };
    using Points = std::deque<Point>;

    struct Column
    {
        double number; ///< Counted from the start of time.
        QVarLengthArray<Point, 4> points;
    };

    double columnOf(const Point& point) const;
    Column reduced(Points::const_iterator first, Points::const_iterator end) const;
    Points::const_iterator endOfColumn(double number) const;
    void bringColumnsUpToDate();

    Points m_points;
    std::deque<Column> m_columns; ///< The first and the last may be out of date.
    double m_columnSeconds = 0.0;
};
