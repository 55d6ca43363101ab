// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/ReadContext.h"

namespace norvo {

/// Reads the panel's key "access"; what is wrong with it is reported.
void readAccess(const YamlEntry& entry, const ReadContext& context, PanelAccess& access);

/// Reads the key "access" or "confirm" of a device.
void readDeviceAccess(const YamlEntry& entry, const ReadContext& context, DeviceAccess& access);
void readConfirm(const YamlEntry& entry, const ReadContext& context, DeviceAccess& access);

/// Reports devices that nobody could ever operate, or that only seem to be locked.
void checkAccess(const PanelDescription& description, Diagnostics& diagnostics);

} // namespace norvo
