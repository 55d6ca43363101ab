// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

namespace norvo {

/// The text with line ends and other control characters as escapes.
QString onOneLine(const QString& text);

/// The text in quotation marks, to stand in a message: on one line, and shortened where it is long.
QString inQuotes(const QString& text);
/// Each of them likewise, with commas between.
QString inQuotes(const QStringList& texts);

} // namespace norvo
