// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointF>
#include <QString>
#include <QVector>

#include <functional>

namespace norvo {

/// What was recorded of a curve: seconds since the epoch and value, in the order of time. NaN: from
/// there to the next point there was nothing.
struct EarlierCurve
{
    QString name; ///< In the legend.
    QVector<QPointF> points;
    double longestPause = 0; ///< In seconds; the curve is broken where there was a longer one.
};

struct EarlierPoints
{
    QVector<EarlierCurve> curves;
    double begin = 0;       ///< Of the whole record; infinite: there is none.
    bool isReadable = true; ///< False: the record cannot be read, and nothing is known of it.
};

/// Reads what was between two times, and later calls `done` unless `receiver` is gone.
using ReadEarlier = std::function<void(double from, double to, QObject& receiver,
                                       std::function<void(const EarlierPoints&)> done)>;

} // namespace norvo
