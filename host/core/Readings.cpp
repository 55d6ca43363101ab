// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/core/Readings.h"

#include <QStringList>

namespace norvo {

std::optional<bool> readBool(const QString& text)
{
    static const QStringList trueTexts{"true", "yes", "on", "1"};
    static const QStringList falseTexts{"false", "no", "off", "0"};

    const QString trimmed = text.trimmed();
    if (trueTexts.contains(trimmed, Qt::CaseInsensitive)) {
        return true;
    }
    if (falseTexts.contains(trimmed, Qt::CaseInsensitive)) {
        return false;
    }
    return std::nullopt;
}

std::optional<double> readDouble(const QString& text)
{
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

} // namespace norvo
