// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/EarlierPoints.h"

#include <QString>

#include <functional>

namespace norvo {

/// What the tools of a graph know of the panel around it.
struct ToolSetting
{
    int keySize = 0;   ///< In pixels, of what is touched.
    QString fileStart; ///< Of files that are saved: a folder and how a name begins.
    /// Does it where whoever is there may save, else asks first. Null: everybody may.
    std::function<void(std::function<void()> action)> permit;
    ReadEarlier readEarlier; ///< Null: of what was before its window nothing is known.
};

} // namespace norvo
