// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/ValuesJson.h"

#include "host/services/status/SourceWatch.h"
#include "host/services/values/ValueTable.h"

#include "norvo/DoubleVec.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace norvo {

namespace {

constexpr int kMaxNumbers = 10000; // Of an array.

/// JSON has neither infinity nor what is no number: they are null.
QJsonValue numberJson(double number)
{
    return std::isfinite(number) ? QJsonValue(number) : QJsonValue(QJsonValue::Null);
}

QJsonValue valueJson(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return numberJson(value.toDouble());
    default:
        break;
    }
    if (value.userType() != qMetaTypeId<DoubleVec>()) {
        return shownText(value);
    }
    const DoubleVec numbers = value.value<DoubleVec>();
    QJsonArray array;
    for (int i = 0; i < std::min(numbers.size(), kMaxNumbers); ++i) {
        array.append(numberJson(numbers[i]));
    }
    return array;
}

/// Of a signal without a value, or with several, an array.
QJsonValue valueJson(const QVariantList& values)
{
    if (values.size() == 1) {
        return valueJson(values.constFirst());
    }
    QJsonArray array;
    for (const QVariant& value : values) {
        array.append(valueJson(value));
    }
    return array;
}

/// Those that are lost.
QStringList lostIn(const SourceWatch& sources)
{
    QStringList lost;
    for (const Source& source : sources.sources()) {
        lost += source.state == Source::State::Lost ? QStringList(source.id) : QStringList();
    }
    return lost;
}

/// What a lost source tells of its own state is as good as ever.
bool isStale(const Reading& reading, const SourceWatch& sources, const QStringList& lost)
{
    static const QStringList states{"connected(bool)", "running(bool)", "fault(QString)"};
    return sources.isStale(reading.device) ||
           (lost.contains(reading.device) && !states.contains(reading.output));
}

QJsonObject readingJson(const Reading& reading, const SourceWatch& sources, const QStringList& lost)
{
    const bool isThere = reading.ageMs >= 0;
    const QString state = !isThere ? "never" : isStale(reading, sources, lost) ? "stale" : "fresh";
    return {{"device", reading.device},
            {"output", reading.output},
            {"value", isThere ? valueJson(reading.values) : QJsonValue(QJsonValue::Null)},
            {"ageMs", isThere ? QJsonValue(double(reading.ageMs)) : QJsonValue(QJsonValue::Null)},
            {"count", double(reading.count)},
            {"state", state}};
}

QJsonObject sourceJson(const Source& source)
{
    static const QHash<int, QString> states{{int(Source::State::Unknown), "unknown"},
                                            {int(Source::State::Well), "well"},
                                            {int(Source::State::Lost), "lost"}};
    return {{"id", source.id},
            {"state", states.value(int(source.state))},
            {"since", source.since.toUTC().toString(Qt::ISODateWithMs)},
            {"message", source.message}};
}

} // namespace

QByteArray valuesJson(const QString& title, const ValueTable& values, const SourceWatch& sources)
{
    const QStringList lost = lostIn(sources);
    QJsonArray readings;
    for (const Reading& reading : values.readings()) {
        readings.append(readingJson(reading, sources, lost));
    }
    QJsonArray watched;
    for (const Source& source : sources.sources()) {
        watched.append(sourceJson(source));
    }
    const QJsonObject all{{"panel", title},
                          {"time", QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
                          {"values", readings},
                          {"sources", watched}};
    return QJsonDocument(all).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace norvo
