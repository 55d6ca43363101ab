// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <vector>

#include <sys/types.h>

namespace norvo {

/// The name of an environment variable that no other process has. A program that is started with it
/// hands it on to all that it starts, so that they can be found even where they have left its
/// process group (`setsid`). One that clears its environment as well is not found.
QByteArray newProcessMark();

/// The processes that have the mark and have not ended.
std::vector<pid_t> markedProcesses(const QByteArray& mark);

} // namespace norvo
