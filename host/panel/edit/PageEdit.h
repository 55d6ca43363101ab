// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/edit/KeepPlaces.h"

namespace norvo {

/// Edits of the pages of a panel, and of their rows and columns. `cells` is where each device that
/// is seen stands now, those of templates too. What a template places is moved with its use, as a
/// whole; where that is not enough the edit is refused.
namespace PageEdit {

using Error = YamlEdit::Error;
using CellsById = norvo::CellsById;

/// A page without devices yet, last. `pages` are those that there are; none: what was there before
/// gets the name "Main".
Error add(YamlEdit& edit, const QStringList& pages, const QString& name);
/// A panel without pages gets its one page named, by the empty name.
Error rename(YamlEdit& edit, const CellsById& cells, const QString& page, const QString& newName);
/// With its devices.
Error remove(YamlEdit& edit, const CellsById& cells, const QString& page);
/// `pages`: all of them in the new order.
Error order(YamlEdit& edit, const CellsById& cells, const QStringList& pages);

/// Moves what stands at `row` or below one row down; what reaches over it grows.
Error insertRow(YamlEdit& edit, const CellsById& cells, const QString& page, int row);
Error insertColumn(YamlEdit& edit, const CellsById& cells, const QString& page, int column);
/// Of an empty one, or one that others only reach over: these shrink. Else refused.
Error removeRow(YamlEdit& edit, const CellsById& cells, const QString& page, int row);
Error removeColumn(YamlEdit& edit, const CellsById& cells, const QString& page, int column);

} // namespace PageEdit

} // namespace norvo
