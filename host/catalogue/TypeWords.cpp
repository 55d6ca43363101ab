// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/TypeWords.h"

#include <algorithm>
#include <cmath>

namespace norvo {

namespace {

QString numberText(double value)
{
    return QString::number(value, 'g', 15);
}

QString wordFor(const QString& type)
{
    static const QMap<QString, QString> words{
        {"double", "number"},   {"float", "number"},     {"int", "number"},    {"uchar", "number"},
        {"uint", "number"},     {"qlonglong", "number"}, {"QString", "text"},  {"bool", "yes/no"},
        {"DoubleVec", "array"}, {"QByteArray", "bytes"}, {"QVariant", "value"}};
    return words.value(type, type);
}

} // namespace

QString toString(ParamKind kind)
{
    static const QStringList names{
        "text",   "lines", "number",       "whole number", "yes/no",  "choice",     "list",
        "colour", "file",  "picture file", "QML file",     "command", "time format"};
    return names.value(int(kind));
}

bool ParamWords::isInRange(double value) const
{
    return !std::isnan(value) && !(min && value < *min) && !(above && value <= *above) &&
           !(max && value > *max);
}

QString ParamWords::range() const
{
    const QString least = min     ? QString("at least %1").arg(numberText(*min))
                          : above ? QString("above %1").arg(numberText(*above))
                                  : QString();
    const QString most = max ? QString("at most %1").arg(numberText(*max)) : QString();
    if (min && max) {
        return QString("%1 to %2").arg(numberText(*min), numberText(*max));
    }
    return least.isEmpty() || most.isEmpty() ? least + most : least + ", " + most;
}

bool Relation::holds(double smallerValue, double largerValue) const
{
    return mayBeEqual ? smallerValue <= largerValue : smallerValue < largerValue;
}

QString Relation::toString() const
{
    return smaller + (mayBeEqual ? " <= " : " < ") + larger;
}

QString MethodWords::carries() const
{
    QStringList words;
    const QString types = signature.section('(', 1).chopped(1);
    for (const QString& type : types.split(',', Qt::SkipEmptyParts)) {
        words.append(wordFor(type));
    }
    return words.isEmpty() ? QString("pulse") : words.join(", ");
}

const ParamWords* TypeWords::param(const QString& name) const
{
    const auto found =
        std::find_if(params.cbegin(), params.cend(), [&name](const ParamWords& words) {
            return words.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == params.cend() ? nullptr : &*found;
}

} // namespace norvo
