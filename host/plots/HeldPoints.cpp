// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/HeldPoints.h"

#include <QVector>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace norvo {

namespace {

constexpr double kBreak = 0.001; // seconds from the end of a curve to where it is none

/// What comes before the points of a curve.
class Beginning
{
public:
    explicit Beginning(double longestPause) : m_longestPause(longestPause) {}

    void add(const QPointF& point)
    {
        breakBefore(point.x());
        append(point.x(), point.y());
    }
    void breakBefore(double key)
    {
        constexpr double nan = std::numeric_limits<double>::quiet_NaN();
        if (m_keys.isEmpty()) {
            return;
        }
        const bool isBroken = std::isnan(m_values.constLast());
        if (!isBroken && key - m_keys.constLast() > m_longestPause) {
            append(m_keys.constLast() + kBreak, nan);
            append(key - kBreak, nan);
        } else if (isBroken) {
            append(key - kBreak, nan);
        }
    }
    void addTo(QCPGraph& curve) const { curve.addData(m_keys, m_values); }

private:
    void append(double key, double value)
    {
        m_keys.append(key);
        m_values.append(value);
    }

    const double m_longestPause;
    QVector<double> m_keys;
    QVector<double> m_values;
};

} // namespace

void prepend(QCPGraph& curve, const EarlierCurve& earlier, double end)
{
    const bool isEmpty = plots::pointsBegin(curve) == plots::pointsEnd(curve);
    const double first = isEmpty ? end : plots::pointsBegin(curve)->key;
    Beginning beginning(earlier.longestPause);
    for (const QPointF& point : earlier.points) {
        if (point.x() < first) {
            beginning.add(point);
        }
    }
    if (!isEmpty) {
        beginning.breakBefore(first);
    }
    beginning.addTo(curve);
}

double dropNewest(QCustomPlot& plot, int most, double needed)
{
    int count = 0;
    for (int i = 0; i < plot.graphCount(); ++i) {
        count += plot.graph(i)->data()->size();
    }
    if (count <= most) {
        return std::numeric_limits<double>::infinity();
    }
    QVector<double> keys;
    keys.reserve(count);
    for (int i = 0; i < plot.graphCount(); ++i) {
        const auto end = plots::pointsEnd(*plot.graph(i));
        for (auto point = plots::pointsBegin(*plot.graph(i)); point != end; ++point) {
            keys.append(point->key);
        }
    }
    const auto last = std::next(keys.begin(), most / 4 * 3 - 1);
    std::nth_element(keys.begin(), last, keys.end());
    const double cut = std::max(*last, needed);
    for (int i = 0; i < plot.graphCount(); ++i) {
        plots::dropAfter(*plot.graph(i), cut);
    }
    return cut;
}

} // namespace norvo
