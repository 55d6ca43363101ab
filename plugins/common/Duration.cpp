// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/common/Duration.h"

#include <QHash>
#include <QRegularExpression>

namespace norvo {

std::optional<std::chrono::milliseconds> readDuration(const QString& text)
{
    static const QHash<QString, double> units{{"ms", 1}, {"s", 1e3}, {"min", 6e4}, {"h", 3.6e6}};
    static const QRegularExpression form(
        "^\\s*([0-9]{1,9}(?:\\.[0-9]{1,9})?)\\s*(ms|s|min|h)\\s*$");
    constexpr double day = 24 * 3.6e6;

    const auto match = form.match(text);
    const double time = match.captured(1).toDouble() * units.value(match.captured(2));
    return time >= 1 && time <= day
               ? std::optional(std::chrono::milliseconds(static_cast<qint64>(time)))
               : std::nullopt;
}

} // namespace norvo
