// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/cells/CellMap.h"

#include <QRect>

#include <algorithm>
#include <tuple>

namespace norvo {

namespace {

QRect rectOf(const Cells& cells)
{
    return {cells.column, cells.row, cells.colspan, cells.rowspan};
}

bool isBefore(const Cells& a, const Cells& b)
{
    return std::tie(a.row, a.column) < std::tie(b.row, b.column);
}

} // namespace

QStringList CellMap::on(const QString& area) const
{
    QStringList ids;
    for (auto one = m_places.cbegin(); one != m_places.cend(); ++one) {
        if (one->area == area) {
            ids.append(one.key());
        }
    }
    std::sort(ids.begin(), ids.end(), [this](const QString& a, const QString& b) {
        const Cells first = m_places[a];
        const Cells second = m_places[b];
        return isBefore(first, second) || (!isBefore(second, first) && a < b);
    });
    return ids;
}

QString CellMap::at(const QString& area, int row, int column) const
{
    Cells cell;
    cell.area = area;
    cell.row = row;
    cell.column = column;
    return inTheWay({{QString(), cell}});
}

int CellMap::rows(const QString& area) const
{
    int rows = 0;
    for (const Cells& one : m_places) {
        rows = one.area == area ? std::max(rows, one.row + one.rowspan) : rows;
    }
    return rows;
}

int CellMap::columns(const QString& area) const
{
    int columns = 0;
    for (const Cells& one : m_places) {
        columns = one.area == area ? std::max(columns, one.column + one.colspan) : columns;
    }
    return columns;
}

CellMap::Places CellMap::moved(const QStringList& ids, const QString& area, int rows,
                               int columns) const
{
    Places places;
    for (const QString& id : ids) {
        const auto one = m_places.constFind(id);
        if (one != m_places.cend()) {
            Cells cells = *one;
            cells.area = area;
            cells.row += rows;
            cells.column += columns;
            places.insert(id, cells);
        }
    }
    return places;
}

CellMap::Places CellMap::grown(const QStringList& ids, int rows, int columns) const
{
    Places places;
    for (const QString& id : ids) {
        const auto one = m_places.constFind(id);
        if (one != m_places.cend()) {
            Cells cells = *one;
            cells.rowspan = std::max(1, cells.rowspan + rows);
            cells.colspan = std::max(1, cells.colspan + columns);
            places.insert(id, cells);
        }
    }
    return places;
}

bool CellMap::isOnPage(const Places& wanted)
{
    return std::all_of(wanted.cbegin(), wanted.cend(), [](const Cells& one) {
        return one.row >= 0 && one.column >= 0 && one.row < Cells::kLimit &&
               one.column < Cells::kLimit && one.rowspan <= Cells::kLimit &&
               one.colspan <= Cells::kLimit;
    });
}

QString CellMap::inTheWay(const Places& wanted) const
{
    auto first = m_places.cend();
    for (auto one = m_places.cbegin(); one != m_places.cend(); ++one) {
        const bool isHit =
            !wanted.contains(one.key()) &&
            std::any_of(wanted.cbegin(), wanted.cend(), [&one](const Cells& cells) {
                return cells.area == one->area && rectOf(cells).intersects(rectOf(*one));
            });
        if (isHit && (first == m_places.cend() || isBefore(*one, *first))) {
            first = one;
        }
    }
    return first == m_places.cend() ? QString() : first.key();
}

bool CellMap::isFree(const Places& wanted) const
{
    return isOnPage(wanted) && inTheWay(wanted).isEmpty();
}

Cells CellMap::block(const Places& group)
{
    QRect around;
    Cells block;
    for (const Cells& one : group) {
        around |= rectOf(one);
        block.area = one.area;
    }
    block.row = around.top();
    block.column = around.left();
    block.rowspan = around.height();
    block.colspan = around.width();
    return block;
}

CellMap::Places CellMap::shifted(const Places& group, const Cells& target)
{
    const Cells from = block(group);
    Places places = group;
    for (Cells& one : places) {
        one.area = target.area;
        one.row += target.row - from.row;
        one.column += target.column - from.column;
    }
    return places;
}

/// The last row that is looked at is empty, so that there is an end.
CellMap::Places CellMap::atFree(const Places& group, const Cells& target) const
{
    Places places = shifted(group, target);
    if (isFree(places)) {
        return places;
    }
    const int last = std::max(columns(target.area) - block(group).colspan, 0);
    Cells next = target;
    next.column = 0;
    for (next.row = target.row; next.row < rows(target.area); ++next.row) {
        for (next.column = 0; next.column <= last; ++next.column) {
            places = shifted(group, next);
            if (isFree(places)) {
                return places;
            }
        }
    }
    next.row = std::max(target.row, rows(target.area));
    next.column = 0;
    return shifted(group, next);
}

} // namespace norvo
