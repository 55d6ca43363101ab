// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGridLayout>
#include <QWidget>

/// "row,column,rowspan,colspan" of the widget of that name in the grid that it stands in.
inline QString placeOf(const QWidget& page, const QString& name)
{
    auto* widget = page.findChild<QWidget*>(name);
    auto* grid = widget ? qobject_cast<QGridLayout*>(widget->parentWidget()->layout()) : nullptr;
    if (!grid) {
        return "nowhere";
    }
    int row, column, rowspan, colspan;
    grid->getItemPosition(grid->indexOf(widget), &row, &column, &rowspan, &colspan);
    return QString("%1,%2,%3,%4").arg(row).arg(column).arg(rowspan).arg(colspan);
}
