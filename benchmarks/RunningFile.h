// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/host/program/RunningFile.h"

#include <QElapsedTimer>

namespace norvo {

using ::RunningFile; ///< Of the tests.

inline const DeviceManager& deviceTypes()
{
    return builtTypes();
}

inline const Catalogue& catalogue()
{
    return RunningFile::catalogue();
}

inline double milliseconds(const QElapsedTimer& clock)
{
    return double(clock.nsecsElapsed()) * 1e-6;
}

} // namespace norvo
