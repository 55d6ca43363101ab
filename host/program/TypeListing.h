// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class DeviceManager;

namespace norvo {

struct Options;

/// Writes on standard output what the options ask to know of the device types. Returns the exit
/// status: 2 where they ask for a type that there is not.
int listTypes(const Options& options, const DeviceManager& manager);

} // namespace norvo
