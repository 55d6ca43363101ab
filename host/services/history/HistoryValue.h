// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <cmath>

namespace norvo {

/// What a signal sent, as the history keeps it.
struct HistoryValue
{
    enum class Kind {
        Gap,    ///< From here on nothing is known: the panel was off, or this was no finite number.
        Number, ///< Finite.
        YesNo,  ///< The number is 1 or 0.
        Text
    };

    static constexpr int kMaxText = 4096; ///< Characters that are kept of a text.

    static HistoryValue gap() { return {}; }
    static HistoryValue of(double value)
    {
        return std::isfinite(value) ? HistoryValue{Kind::Number, value, {}} : gap();
    }
    static HistoryValue of(bool value) { return {Kind::YesNo, value ? 1.0 : 0.0, {}}; }
    static HistoryValue of(const QString& value) { return {Kind::Text, 0, value.left(kMaxText)}; }
    /// Of a type that holds neither text nor number: a gap.
    static HistoryValue of(const QVariant& value)
    {
        switch (int(value.type())) {
        case QMetaType::Bool:
            return of(value.toBool());
        case QMetaType::QString:
            return of(value.toString());
        default:
            bool isNumber = false;
            const double number = value.toDouble(&isNumber);
            return isNumber ? of(number) : gap();
        }
    }

    Kind kind = Kind::Gap;
    double number = 0;
    QString text;
};

/// A value and its time, in milliseconds since the epoch, UTC.
struct HistoryPoint
{
    qint64 time = 0;
    HistoryValue value;
};

} // namespace norvo
