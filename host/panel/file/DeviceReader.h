// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/ReadContext.h"

namespace norvo {

/// Reads what the entry says about the device whose id `device` has: its type, its parameters and
/// "network". In a use of a template it then moves the device to where the use stands.
void readDevice(const YamlEntry& entry, const ReadContext& context, DeviceSetting& device);

} // namespace norvo
