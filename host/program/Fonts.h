// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace norvo {

/// Lets free families stand in for those that devices ask for by name, where a family is not
/// installed.
void substituteFonts();

} // namespace norvo
