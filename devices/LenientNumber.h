// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

/// The number in a text from the wiring or from an operator, whose decimal point may be a comma.
inline std::optional<double> parseNumber(const QString& text)
{
    bool ok = false;
    const double asGiven = text.toDouble(&ok);
    if (ok) {
        return asGiven;
    }
    QString copy = text;
    const double withPoints = copy.replace(',', '.').toDouble(&ok);
    if (ok) {
        return withPoints;
    }
    const double withCommas = copy.replace('.', ',').toDouble(&ok);
    return ok ? std::optional(withCommas) : std::nullopt;
}
