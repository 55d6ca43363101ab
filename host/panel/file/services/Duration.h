// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/ReadContext.h"

#include <QString>

#include <chrono>
#include <optional>

namespace norvo {

using Duration = std::chrono::milliseconds;

constexpr Duration kMaxDuration = std::chrono::hours(10000);

/// The time that a text such as "500 ms", "2 s", "1.5 min", "1 h" or "30 d" stands for; none for a
/// text without unit, for less than nothing, and for more than kMaxDuration.
std::optional<Duration> toDuration(const QString& text);

/// Reads an entry whose value is such a text; otherwise reports what to write, and returns none.
std::optional<Duration> readDuration(const YamlEntry& entry, const ReadContext& context);

/// The pattern of such a text for a JSON schema.
QString durationPattern();

} // namespace norvo
