// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Placement.h"

#include "host/yaml/Quote.h"

#include "norvo/Categories.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace norvo {

namespace {

bool isSpan(const QString& param)
{
    return param == kWidgetRowspan || param == kWidgetColspan;
}

bool isPosition(const QString& param)
{
    return param == kWidgetRow || param == kWidgetColumn;
}

std::optional<int> readNumber(const QString& param, const QString& value)
{
    bool ok = false;
    const int number = value.trimmed().toInt(&ok);
    const int lowest = isSpan(param) ? 1 : -1;
    const int highest = isSpan(param) ? Cells::kLimit : Cells::kLimit - 1;
    return ok && number >= lowest && number <= highest ? std::optional(number) : std::nullopt;
}

/// The grid of one area: bands of equal rows, each with the columns that are taken in it.
class Grid
{
public:
    struct Collision
    {
        int owner;
        int row;
        int column;
    };

    /// Takes those of the cells that are free. Returns whose the others are, each owner once.
    QVector<Collision> take(const Cells& cells, int owner)
    {
        QVector<Collision> collisions;
        QSet<int> known;
        const int end = cells.row + cells.rowspan;
        split(cells.row);
        split(end);
        for (int row = cells.row; row < end;) {
            auto band = m_bands.lower_bound(row);
            if (band == m_bands.end() || band->first > row) {
                const int next = band == m_bands.end() ? end : std::min(band->first, end);
                band = m_bands.insert({row, {next - 1, {}}}).first;
            }
            takeColumns(band->second.columns, cells, owner, [&](int other, int column) {
                if (!known.contains(other)) {
                    known.insert(other);
                    collisions.append({other, row, column});
                }
            });
            row = band->second.last + 1;
        }
        return collisions;
    }

    /// Completes a request by the first free place that it allows.
    void findPlace(Cells& cells)
    {
        if (cells.row >= 0) {
            findColumn(cells);
        } else if (cells.column >= 0) {
            findRow(cells);
        } else {
            findWholeRows(cells);
        }
    }

private:
    struct Part
    {
        int last; ///< Column.
        int owner;
    };
    using Columns = std::map<int, Part>; ///< By the first column; the parts do not overlap.
    struct Band
    {
        int last; ///< Row.
        Columns columns;
    };
    using Bands = std::map<int, Band>; ///< By the first row; the bands do not overlap.

    /// The first part that ends at the column or behind it.
    static Columns::const_iterator firstFrom(const Columns& columns, int column)
    {
        auto part = columns.upper_bound(column);
        if (part != columns.cbegin() && std::prev(part)->second.last >= column) {
            --part;
        }
        return part;
    }

    /// The first band that ends at the row or below it.
    Bands::const_iterator firstBandFrom(int row) const
    {
        auto band = m_bands.upper_bound(row);
        if (band != m_bands.cbegin() && std::prev(band)->second.last >= row) {
            --band;
        }
        return band;
    }

    /// Sees to it that no band goes across the upper edge of the row.
    void split(int row)
    {
        const auto found = m_bands.lower_bound(row);
        if (found == m_bands.begin() || std::prev(found)->second.last < row) {
            return;
        }
        Band& band = std::prev(found)->second;
        m_bands.insert({row, band});
        band.last = row - 1;
    }

    template <class Report>
    static void takeColumns(Columns& columns, const Cells& cells, int owner, const Report& report)
    {
        const int last = cells.column + cells.colspan - 1;
        int column = cells.column;
        for (auto part = firstFrom(columns, column); part != columns.end() && part->first <= last;
             ++part) {
            report(part->second.owner, std::max(column, part->first));
            if (column < part->first) {
                columns.insert({column, {part->first - 1, owner}});
            }
            column = part->second.last + 1;
        }
        if (column <= last) {
            columns.insert({column, {last, owner}});
        }
    }

    /// The last column of what is in the way in these columns; -1: nothing.
    static int obstacle(const Columns& columns, int column, int colspan)
    {
        const auto part = firstFrom(columns, column);
        return part != columns.cend() && part->first < column + colspan ? part->second.last : -1;
    }

    void findColumn(Cells& cells)
    {
        int& column = m_nextColumn[cells.row];
        bool hasMoved = true;
        while (hasMoved) {
            hasMoved = false;
            for (auto band = firstBandFrom(cells.row);
                 band != m_bands.cend() && band->first < cells.row + cells.rowspan; ++band) {
                int last = obstacle(band->second.columns, column, cells.colspan);
                while (last >= 0) {
                    column = last + 1;
                    hasMoved = true;
                    last = obstacle(band->second.columns, column, cells.colspan);
                }
            }
        }
        cells.column = column;
        column += cells.colspan;
    }

    void findRow(Cells& cells)
    {
        int& first = m_nextRow[cells.column];
        for (auto band = firstBandFrom(first);
             band != m_bands.cend() && band->first < first + cells.rowspan; ++band) {
            if (obstacle(band->second.columns, cells.column, cells.colspan) >= 0) {
                first = band->second.last + 1;
            }
        }
        cells.row = first;
        first += cells.rowspan;
    }

    void findWholeRows(Cells& cells)
    {
        for (auto band = firstBandFrom(m_nextWholeRow);
             band != m_bands.cend() && band->first < m_nextWholeRow + cells.rowspan; ++band) {
            m_nextWholeRow = band->second.last + 1;
        }
        cells.row = m_nextWholeRow;
        cells.column = 0;
        m_nextWholeRow += cells.rowspan;
    }

    Bands m_bands;                ///< Only rows in which something is taken.
    QHash<int, int> m_nextColumn; ///< By row: where findColumn() goes on.
    QHash<int, int> m_nextRow;    ///< By column: where findRow() goes on.
    int m_nextWholeRow = 0;
};

/// When a request is served: 0 to 3.
int passOf(const Cells& request)
{
    if (request.row >= 0) {
        return request.column >= 0 ? 0 : 1;
    }
    return request.column >= 0 ? 2 : 3;
}

} // namespace

Cells readCells(const std::function<QString(const QString&)>& valueOf)
{
    const auto number = [&valueOf](const QString& param, int fallback) {
        return readNumber(param, valueOf(param)).value_or(fallback);
    };
    Cells cells;
    cells.area = valueOf(kWidgetArea);
    cells.row = number(kWidgetRow, -1);
    cells.column = number(kWidgetColumn, -1);
    cells.rowspan = number(kWidgetRowspan, 1);
    cells.colspan = number(kWidgetColspan, 1);
    return cells;
}

QString placementError(const QString& param, const QString& value)
{
    if ((!isSpan(param) && !isPosition(param)) || readNumber(param, value)) {
        return {};
    }
    const QString range =
        isSpan(param)
            ? QString("from 1 to %1").arg(Cells::kLimit)
            : QString("from 0 to %1, nor -1 for the next free place").arg(Cells::kLimit - 1);
    return inQuotes(value) + " is not a whole number " + range;
}

Placement::Placement(const QVector<Cells>& requests) : m_cells(requests)
{
    QHash<QString, Grid> grids;
    for (const Cells& request : requests) {
        if (!request.area.isEmpty() && !grids.contains(request.area)) {
            m_areas.append(request.area);
            grids.insert(request.area, {});
        }
    }
    const QString firstArea = m_areas.value(0);
    QVector<int> passes[4];
    for (int i = 0; i < m_cells.size(); ++i) {
        if (m_cells[i].area.isEmpty()) {
            m_cells[i].area = firstArea;
        }
        passes[passOf(m_cells[i])].append(i);
    }
    for (int pass = 0; pass < 4; ++pass) {
        for (const int i : std::as_const(passes[pass])) {
            Grid& grid = grids[m_cells[i].area];
            if (pass > 0) {
                grid.findPlace(m_cells[i]);
            }
            if (m_overlaps.size() < kMaxOverlaps) {
                const auto collisions = grid.take(m_cells[i], i);
                for (const Grid::Collision& collision : collisions) {
                    m_overlaps.append({i, collision.owner, collision.row, collision.column});
                }
            }
        }
    }
}

} // namespace norvo
