// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Placement.h"
#include "host/yaml/YamlEdit.h"

#include <QHash>
#include <QStringList>

#include <functional>

namespace norvo {

/// Where each device that is seen stands, by its id.
using CellsById = QHash<QString, Cells>;

/// Writes cells for those devices that an edit has moved although it did not mean them: a device
/// without row and column goes to whatever cell is the next free one. `before` is where each stood,
/// `meant` those that the edit has moved, `cellsOf` says where a text puts its devices. Devices
/// that the file does not have itself stay where they have got to.
YamlEdit::Error keepPlaces(YamlEdit& edit, const CellsById& before, const QStringList& meant,
                           const std::function<CellsById(const YamlEdit&)>& cellsOf);

/// Where the text puts those of its own devices that `known` has: what `cellsOf` may be where all
/// of them are of the file itself, and none is new.
CellsById cellsByText(const YamlEdit& edit, const CellsById& known);

} // namespace norvo
