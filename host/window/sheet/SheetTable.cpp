// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/sheet/SheetTable.h"

#include <QHeaderView>
#include <QScroller>
#include <QTableWidget>

namespace norvo {

void SheetTable::prepare(QTableWidget& table)
{
    table.setEditTriggers(QTableWidget::NoEditTriggers);
    table.setSelectionBehavior(QTableWidget::SelectRows);
    table.setShowGrid(false);
    table.setAlternatingRowColors(true);
    table.setTabKeyNavigation(false); // Tab goes on to the keys.
    table.setVerticalScrollMode(QTableWidget::ScrollPerPixel);
    QScroller::grabGesture(table.viewport(), QScroller::TouchGesture);
    table.verticalHeader()->hide();
    table.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void SheetTable::fill(QTableWidget& table, int row, const QStringList& texts)
{
    for (int column = 0; column < texts.size(); ++column) {
        if (!table.item(row, column)) {
            table.setItem(row, column, new QTableWidgetItem);
        }
        table.item(row, column)->setText(texts[column]);
    }
}

} // namespace norvo
