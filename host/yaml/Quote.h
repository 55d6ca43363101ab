// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

/// The text with line ends and other control characters as escapes.
QString onOneLine(const QString& text);

/// The text in quotation marks, to stand in a message: on one line, and shortened where it is long.
QString inQuotes(const QString& text);

} // namespace norvo
