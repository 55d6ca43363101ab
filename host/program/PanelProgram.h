// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/options/CommandLine.h"

namespace norvo {

/// The program from its options to its exit status, once in a process: 0, or 1 when something kept
/// it from doing what it was asked for.
int runProgram(const Options& options);

} // namespace norvo
