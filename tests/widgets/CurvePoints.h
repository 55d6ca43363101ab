// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <qcustomplot.h>

// What a plot holds, asked in words that both generations of the plot library understand.

/// A curve's points as "(1, 0.5) (2, 0.7)".
inline QString pointsOf(const QCPGraph* curve)
{
    QStringList points;
    for (const auto& point : *curve->data()) {
        points.append(QString("(%1, %2)").arg(point.key).arg(point.value));
    }
    return points.join(' ');
}

inline int pointCount(const QCPGraph* curve)
{
    return curve->data()->size();
}

using Bounds = QPair<double, double>;

/// The lower and the upper end of an axis.
inline Bounds boundsOf(const QCPAxis* axis)
{
    return {axis->range().lower, axis->range().upper};
}
