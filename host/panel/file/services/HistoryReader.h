// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/ReadContext.h"
#include "host/panel/file/services/HistorySetting.h"

namespace norvo {

constexpr int kMaxRecorded = 2000; ///< Signals of a panel.

/// Reads the key "history".
void readHistory(const YamlEntry& entry, const ReadContext& context, HistorySetting& history);

/// The pattern of a size such as "500 MB" for a JSON schema.
QString historySizePattern();

} // namespace norvo
