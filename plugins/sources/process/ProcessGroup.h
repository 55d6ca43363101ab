#pragma once

#include <sys/types.h>

namespace norvo {

/// Whether a process of that group still runs. Those that only wait to be reaped do not: their
/// parent may take its time.
bool isGroupAlive(pid_t group);

} // namespace norvo
