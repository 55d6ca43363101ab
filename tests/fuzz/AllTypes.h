// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/PluginSet.h"

namespace norvo {

/// The device types of all plug-ins, loaded at the first call.
inline const DeviceManager& allTypes()
{
    static const auto* const plugins = [] {
        auto* const all =
            new PluginSet; // Never deleted: devices may die after the last line of main().
        all->load(NORVO_BUILD_DIR "/plugins");
        return all;
    }();
    return plugins->manager();
}

} // namespace norvo
