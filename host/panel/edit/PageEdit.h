// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Placement.h"
#include "host/yaml/YamlEdit.h"

#include <QHash>

namespace norvo {

/// Edits of the pages of a panel, and of their rows and columns.
namespace PageEdit {

using Error = YamlEdit::Error;
using CellsById = QHash<QString, Cells>; ///< Where each device that is seen stands now.

/// A page without devices yet, last. The first one that is added names what was there before, too.
Error add(YamlEdit& edit, const QStringList& pages, const QString& name);
Error rename(YamlEdit& edit, const CellsById& cells, const QString& page, const QString& newName);
/// With its devices.
Error remove(YamlEdit& edit, const CellsById& cells, const QString& page);
/// `pages`: all of them in the new order.
Error order(YamlEdit& edit, const QStringList& pages);

/// Moves what stands at `row` or below one row down; what reaches over it grows.
Error insertRow(YamlEdit& edit, const CellsById& cells, const QString& page, int row);
Error insertColumn(YamlEdit& edit, const CellsById& cells, const QString& page, int column);
/// Of an empty one, or one that others only reach over: these shrink. Else refused.
Error removeRow(YamlEdit& edit, const CellsById& cells, const QString& page, int row);
Error removeColumn(YamlEdit& edit, const CellsById& cells, const QString& page, int column);

} // namespace PageEdit

} // namespace norvo
