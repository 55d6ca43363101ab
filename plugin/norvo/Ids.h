// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

#include <algorithm>

namespace norvo {

/// Whether the text can be the id of a device, or the name of an output or input that a panel's
/// author gives: letters, digits, "_" and "-".
inline bool isId(const QString& text)
{
    const QVector<uint> characters = text.toUcs4();
    return !text.isEmpty() && std::all_of(characters.cbegin(), characters.cend(), [](uint c) {
        return QChar::isLetter(c) || QChar::isMark(c) || QChar::isDigit(c) || c == '_' || c == '-';
    });
}

} // namespace norvo
