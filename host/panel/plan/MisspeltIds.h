// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

namespace norvo {

/// Reports a device that no connection mentions, at its id, where several connections mention a
/// like id that no device has: then it is the device that is misspelt.
void reportMisspeltIds(const PanelDescription& description, Diagnostics& diagnostics);

} // namespace norvo
