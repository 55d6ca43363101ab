// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/SeenPoints.h"

#include "host/plots/KeyTime.h"
#include "host/plots/PlotCopy.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <cmath>
#include <limits>
#include <optional>

namespace norvo {

namespace {

constexpr double kReachPixels = 10; // of a point that stands alone
constexpr double kFineSeconds = 10; // In a range below that, parts of seconds tell.

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(norvo::SeenPoints)
};

QDateTime timeOf(double seconds)
{
    constexpr double latest = 253402300799.0; // The end of the year 9999.
    return QDateTime::fromMSecsSinceEpoch(millisecondsOf(qBound(0.0, seconds, latest)));
}

/// With the distance from the zone of the whole world.
QByteArray isoTime(double seconds)
{
    const QDateTime local = timeOf(seconds);
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODateWithMs).toLatin1();
}

QByteArray numberText(double number)
{
    return std::isfinite(number) ? QByteArray::number(number, 'g', QLocale::FloatingPointShortest)
                                 : QByteArray();
}

QByteArray quoted(QString text)
{
    return '"' + text.replace('"', "\"\"").toUtf8() + '"';
}

struct Point
{
    double distance;
    double value;
};

/// The nearest point of one piece of a curve.
std::optional<Point> nearest(const QCPGraph& piece, double key, double reach)
{
    const auto begin = plots::pointsBegin(piece);
    const auto end = plots::pointsEnd(piece);
    auto point = plots::firstFrom(piece, key);
    const bool isInside = point != end && (point != begin || point->key <= key);
    if (begin == end) {
        return {};
    }
    if (point == end || (point != begin && key - (point - 1)->key < point->key - key)) {
        --point;
    }
    const double distance = std::abs(point->key - key);
    return isInside || distance <= reach ? std::make_optional(Point{distance, point->value})
                                         : std::nullopt;
}

} // namespace

QVector<CurveValue> valuesAt(const PlotCopy& plot, double key)
{
    const double reach = plot.xAxis->range().size() * kReachPixels / plot.area().width();
    QVector<CurveValue> values;
    QVector<double> distances;
    for (int i = 0; i < plot.graphCount(); ++i) {
        const QCPGraph& piece = *plot.graph(i);
        if (plot.isHidden(piece.name())) {
            continue;
        }
        int at = 0;
        while (at < values.size() && values[at].curve != piece.name()) {
            ++at;
        }
        if (at == values.size()) {
            values.append(
                {piece.name(), piece.pen().color(), std::numeric_limits<double>::quiet_NaN()});
            distances.append(std::numeric_limits<double>::infinity());
        }
        const auto point = nearest(piece, key, reach);
        if (point && point->distance < distances[at]) {
            values[at].value = point->value;
            distances[at] = point->distance;
        }
    }
    return values;
}

QString keyText(const PlotCopy& plot, double key, bool isFine)
{
    if (!plot.showsTimes()) {
        return Texts::tr("No. %1").arg(std::llround(qBound(-1e15, key, 1e15)));
    }
    const QDateTime time = timeOf(key);
    const QString clock = time.toString(isFine ? "hh:mm:ss.zzz" : "hh:mm:ss");
    return time.date() == QDate::currentDate() ? clock
                                               : time.date().toString(Qt::ISODate) + ' ' + clock;
}

QString rangeText(const PlotCopy& plot)
{
    const QCPRange range = plot.xAxis->range();
    const bool isFine = range.size() < kFineSeconds;
    return QString("%1 \u2013 %2")
        .arg(keyText(plot, range.lower, isFine), keyText(plot, range.upper, isFine));
}

QByteArray tableOf(const PlotCopy& plot)
{
    const QCPRange range = plot.xAxis->range();
    QByteArray table = plot.showsTimes() ? "time,curve,value\r\n" : "index,curve,value\r\n";
    for (int i = 0; i < plot.graphCount(); ++i) {
        const QCPGraph& piece = *plot.graph(i);
        if (plot.isHidden(piece.name())) {
            continue;
        }
        const QByteArray name = quoted(piece.name());
        const auto end = plots::pointsEnd(piece);
        for (auto point = plots::firstFrom(piece, range.lower);
             point != end && point->key <= range.upper; ++point) {
            table += plot.showsTimes() ? isoTime(point->key) : numberText(point->key);
            table += ',' + name + ',' + numberText(point->value) + "\r\n";
        }
    }
    return table;
}

} // namespace norvo
