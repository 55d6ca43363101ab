// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmCondition.h"

#include <cmath>
#include <limits>

namespace norvo {

namespace {

/// NaN where it is none.
double numberOf(const QVariant& value)
{
    bool isNumber = value.type() != QVariant::Bool;
    const double number = isNumber ? value.toDouble(&isNumber) : 0;
    return isNumber ? number : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

std::optional<bool> isBeyondLimit(const AlarmLimit& limit, const QVariant& value, bool isBeyond)
{
    using Kind = AlarmLimit::Kind;
    if (limit.kind == Kind::Is) {
        return value.type() == QVariant::Bool ? std::make_optional(value.toBool() == limit.isYes)
                                              : std::nullopt;
    }
    const bool isText = value.type() == QVariant::String;
    if (limit.kind == Kind::Equals && (isText || std::isnan(limit.number))) {
        return isText ? std::make_optional(value.toString() == limit.text) : std::nullopt;
    }
    const double number = numberOf(value);
    if (std::isnan(number)) {
        return std::nullopt;
    }
    switch (limit.kind) {
    case Kind::Above:
        return number > limit.number || (isBeyond && number > limit.number - limit.deadband);
    case Kind::Below:
        return number < limit.number || (isBeyond && number < limit.number + limit.deadband);
    default:
        return !(number < limit.number) && !(number > limit.number);
    }
}

} // namespace norvo
