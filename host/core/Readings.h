// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace norvo {

/// "true", "yes", "on" and "1", "false", "no", "off" and "0", in any case; else nothing.
std::optional<bool> readBool(const QString& text);
/// With "." for the decimal point, whatever the locale; nothing for what is no number.
std::optional<double> readDouble(const QString& text);

} // namespace norvo
