// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace norvo {

/// Asks for a PIN, twice and without showing it on a terminal, once elsewhere, and prints its hash.
/// Returns the exit status.
int makePin();

} // namespace norvo
