#pragma once

#include <QPolygonF>

#include <deque>

/// The values of the last ten seconds, in the order of their times.
class GaugeHistory
{
public:
    static constexpr double kSpanSeconds = 10.0;

    /// What turns a value into a height in pixels.
    struct ValueAxis
    {
        double base;          ///< Height of `min`.
        double min;           ///< Value at the base.
        double pixelsPerUnit; ///< Upwards, so that heights shrink as values grow.

        double y(double value) const { return base - (value - min) * pixelsPerUnit; }
    };

    bool isEmpty() const { return m_points.empty(); }
    int size() const { return int(m_points.size()); }
    double latestValue() const { return m_points.back().value; } ///< Not for an empty history.

    /// Times are seconds. A value of the same time as one that is there replaces it.
    void insert(double time, double value);
    /// Drops what is older than ten seconds, from the oldest on, up to the first that is younger.
    void prune(double now);

    /// The line through all points, ten seconds to `width` pixels, `now` at the right end. Points
    /// at no number are left out, those beyond any screen drawn at its edge.
    QPolygonF trace(double now, double width, const ValueAxis& axis) const;
    /// The same line with at most four points for each column of pixels: its first, smallest,
    /// largest and last value.
    QPolygonF reducedTrace(double now, double width, const ValueAxis& axis) const;

private:
    struct Point
    {
        double time;
        double value;
    };
    using Points = std::deque<Point>;

    template <class Sink>
    static void reduceColumn(Points::const_iterator first, Points::const_iterator end, Sink sink);

    Points m_points;
};
