// SPDX-License-Identifier: LGPL-3.0-or-later

#include "norvo/Readings.h"

#include <QLocale>
#include <QStringList>

#include <cmath>

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

QString numberText(double value)
{
    const double size = std::abs(value);
    const bool isPlain = size == 0 || (size >= 1e-4 && size < 1e15);
    return QString::number(value, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

} // namespace norvo
