// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class QTableWidget;

namespace norvo {

/// What the tables on sheets have in common: read, not edited; whole rows; drawn by a finger.
namespace SheetTable {

void prepare(QTableWidget& table);
/// The texts of a row, whose items are made where there are none.
void fill(QTableWidget& table, int row, const QStringList& texts);

} // namespace SheetTable

} // namespace norvo
