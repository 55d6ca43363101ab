// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QString>

#include <optional>

namespace norvo {

/// "true", "yes", "on" and "1", "false", "no", "off" and "0", in any case; else nothing.
NORVO_EXPORT std::optional<bool> readBool(const QString& text);
/// With "." for the decimal point, whatever the locale; nothing for what is no number.
NORVO_EXPORT std::optional<double> readDouble(const QString& text);
/// As a person would write it, with all digits that tell it from its neighbours.
NORVO_EXPORT QString numberText(double value);

} // namespace norvo
