// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/services/Duration.h"

#include <QMap>
#include <QRegularExpression>

#include <cmath>

namespace norvo {

namespace {

const QMap<QString, double> kMilliseconds{
    {"ms", 1}, {"s", 1000}, {"min", 60000}, {"h", 3600000}, {"d", 86400000}};

bool isPlainNumber(const QString& text)
{
    bool isNumber = false;
    const double number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number) && number >= 0;
}

QString errorOf(const QString& key, const YamlNode& value, const QString& text)
{
    if (value.isText() && isPlainNumber(text)) {
        return QString("%1 lacks a unit; write \"%2 ms\", \"%2 s\", \"%2 min\" or \"%2 h\"")
            .arg(key, text.trimmed());
    }
    return QString("%1 must be a time of at most 10,000 h with its unit, such as \"500 ms\", "
                   "\"2 s\", \"5 min\" or \"1 h\"%2")
        .arg(key, value.isText() && !text.isEmpty() ? ", not " + inQuotes(text) : QString());
}

} // namespace

QString durationPattern()
{
    return "^\\s*(\\d{1,12}(?:\\.\\d{1,12})?)\\s*(ms|s|min|h|d)\\s*$";
}

std::optional<Duration> toDuration(const QString& text)
{
    static const QRegularExpression pattern(durationPattern());
    const auto match = pattern.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    const double ms = match.captured(1).toDouble() * kMilliseconds.value(match.captured(2));
    if (ms > double(kMaxDuration.count())) {
        return std::nullopt;
    }
    return Duration(std::llround(ms));
}

std::optional<Duration> readDuration(const YamlEntry& entry, const ReadContext& context)
{
    const QString text = context.text(*entry.value);
    const auto read = entry.value->isText() ? toDuration(text) : std::nullopt;
    if (!read) {
        context.refuse(entry.place, errorOf(context.text(*entry.key), *entry.value, text));
    }
    return read;
}

} // namespace norvo
