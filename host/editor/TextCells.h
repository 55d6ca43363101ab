// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/edit/KeepPlaces.h"

namespace norvo {

class Catalogue;
struct PanelDescription;

/// Where a description puts its devices that are seen, by what it says alone.
CellsById cellsOfText(const PanelDescription& panel, const Catalogue& catalogue);

} // namespace norvo
