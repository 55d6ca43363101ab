// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Placement.h"

#include <QHash>
#include <QStringList>

namespace norvo {

/// Which cells of the pages are taken, by whom, and who may go where.
class CellMap
{
public:
    using Places = QHash<QString, Cells>; ///< By the id of the device.

    CellMap() = default;
    explicit CellMap(const Places& places) : m_places(places) {}

    const Places& places() const { return m_places; }
    QStringList on(const QString& area) const;                  ///< Ids, by row and column.
    QString at(const QString& area, int row, int column) const; ///< Empty: the cell is free.
    int rows(const QString& area) const;                        ///< Up to the last that is taken.
    int columns(const QString& area) const;

    /// Those of `ids` that are seen, so many rows and columns further on the page `area`.
    Places moved(const QStringList& ids, const QString& area, int rows, int columns) const;
    /// With so many rows and columns more, but one of each at least.
    Places grown(const QStringList& ids, int rows, int columns) const;

    /// Whether all of it lies on a page, within the limits of a panel.
    static bool isOnPage(const Places& wanted);
    /// The first device, by row and column, that has a cell of the wanted ones and is not itself
    /// one of them; empty: none.
    QString inTheWay(const Places& wanted) const;
    bool isFree(const Places& wanted) const;

    /// The cells that the group covers as one block; of one page.
    static Cells block(const Places& group);
    /// The group with its upper left cell at `target`; row and column of it count.
    static Places shifted(const Places& group, const Cells& target);
    /// The group at `target`, or at the first cells behind it, by rows, where it is free.
    Places atFree(const Places& group, const Cells& target) const;

private:
    Places m_places;
};

} // namespace norvo
