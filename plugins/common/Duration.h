// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace norvo {

/// Reads a time with its unit, "500 ms", "5 s", "2.5 min" or "1 h", with or without the space:
/// above 0 and up to a day. Nothing where the text is none.
std::optional<std::chrono::milliseconds> readDuration(const QString& text);

} // namespace norvo
