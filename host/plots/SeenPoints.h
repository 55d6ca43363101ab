// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QVector>

namespace norvo {

class PlotCopy;

/// What a curve has at one place; NaN: it has nothing there.
struct CurveValue
{
    QString curve;
    QColor colour;
    double value;
};

/// Of all curves that are not hidden, in their order, pieces of one name as one. The value is that
/// of the point next to `key`, and is never made up: in a gap of a curve there is none.
QVector<CurveValue> valuesAt(const PlotCopy& plot, double key);

/// In words: the time of day, to the millisecond where `isFine` is set, with the date unless it is
/// today's; or the number of an element.
QString keyText(const PlotCopy& plot, double key, bool isFine);
QString rangeText(const PlotCopy& plot); ///< From the first to the last that is seen.

/// The points that are seen, as a table (RFC 4180): time (ISO 8601 with the zone) or index, curve,
/// value. Hidden curves are left out.
QByteArray tableOf(const PlotCopy& plot);

} // namespace norvo
