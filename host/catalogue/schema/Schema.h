// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace norvo {

class Catalogue;

namespace Schema {

/// A JSON Schema (draft 7) of panel files with these device types, for editors that complete and
/// check while a panel is written, without a line end behind the last line. It allows all that the
/// panel file reader does; what depends on other places of the file is left to the check.
QString ofPanelFiles(const Catalogue& catalogue);

} // namespace Schema

} // namespace norvo
