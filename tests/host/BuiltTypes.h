// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/PluginSet.h"

/// The plug-ins as they are built.
inline const DeviceManager& builtTypes()
{
    static const norvo::PluginSet plugins = [] {
        norvo::PluginSet set;
        set.load(NORVO_BUILD_DIR "/plugins");
        return set;
    }();
    return plugins.manager();
}
