// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"

namespace norvo {

/// What is reported now and was not before, or not as often. Lines may have moved.
DiagnosticList newProblems(const DiagnosticList& before, const DiagnosticList& now);

} // namespace norvo
