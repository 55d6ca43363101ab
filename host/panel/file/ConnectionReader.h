// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/ReadContext.h"

#include <optional>

namespace norvo {

constexpr char kConnectionExample[] = "\"source.signal -> target.slot\"";

/// Reads one connection, "id.signal -> id.slot"; none where it is refused.
///
/// In a use of a template an id is that of one of the use's own devices, unless a placeholder
/// begins that side: then it is an id where the placeholder's value was written.
std::optional<ConnectionSetting> readConnection(const YamlEntry& entry, const ReadContext& context);

/// Reads a text "id.signal" by the same rules; none where it is refused.
std::optional<Endpoint> readSource(const YamlEntry& entry, const ReadContext& context);

} // namespace norvo
