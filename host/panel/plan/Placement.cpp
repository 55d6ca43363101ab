#include "host/panel/plan/Placement.h"

#include "host/panel/file/Diagnostics.h"

#include "norvo/Categories.h"

#include <QHash>
#include <QSet>

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

/// The grid of one area, as the columns that are taken in each row.
class Grid
{
public:
    struct Meeting
    {
        int owner;
        int row;
        int column;
    };

    /// Takes those of the cells that are free; tells whose the others are, each owner once.
    QVector<Meeting> take(const Cells& cells, int owner)
    {
        QVector<Meeting> meetings;
        QSet<int> met;
        const int last = cells.column + cells.colspan - 1;
        for (int row = cells.row; row < cells.row + cells.rowspan; ++row) {
            Row& taken = m_rows[row];
            int column = cells.column;
            for (auto part = firstFrom(taken, column); part != taken.end() && part->first <= last;
                 ++part) {
                if (!met.contains(part->second.owner)) {
                    met.insert(part->second.owner);
                    meetings.append({part->second.owner, row, qMax(column, part->first)});
                }
                if (column < part->first) {
                    taken.insert({column, {part->first - 1, owner}});
                }
                column = part->second.last + 1;
            }
            if (column <= last) {
                taken.insert({column, {last, owner}});
            }
        }
        return meetings;
    }

    /// Completes a wish by the first free place that it allows.
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
    using Row = std::map<int, Part>; ///< By the first column; the parts do not overlap.

    static Row::const_iterator firstFrom(const Row& row, int column)
    {
        auto part = row.upper_bound(column);
        if (part != row.cbegin() && std::prev(part)->second.last >= column) {
            --part;
        }
        return part;
    }

    /// The last of the part of this row that is in the way; -1 when none is.
    int obstacle(int row, int column, int colspan) const
    {
        const auto taken = m_rows.find(row);
        if (taken == m_rows.cend()) {
            return -1;
        }
        const auto part = firstFrom(taken->second, column);
        const bool inTheWay = part != taken->second.cend() && part->first < column + colspan;
        return inTheWay ? part->second.last : -1;
    }

    void findColumn(Cells& cells)
    {
        int& column = m_nextColumn[cells.row];
        for (int row = cells.row; row < cells.row + cells.rowspan;) {
            const int last = obstacle(row, column, cells.colspan);
            column = last < 0 ? column : last + 1;
            row = last < 0 ? row + 1 : cells.row;
        }
        cells.column = column;
        column += cells.colspan;
    }

    void findRow(Cells& cells)
    {
        int& first = m_nextRow[cells.column];
        for (int row = first; row < first + cells.rowspan; ++row) {
            if (obstacle(row, cells.column, cells.colspan) >= 0) {
                first = row + 1;
            }
        }
        cells.row = first;
        first += cells.rowspan;
    }

    void findWholeRows(Cells& cells)
    {
        for (auto row = m_rows.lower_bound(m_nextWholeRow);
             row != m_rows.cend() && row->first < m_nextWholeRow + cells.rowspan; ++row) {
            m_nextWholeRow = row->first + 1;
        }
        cells.row = m_nextWholeRow;
        cells.column = 0;
        m_nextWholeRow += cells.rowspan;
    }

    std::map<int, Row> m_rows;    ///< Only rows in which something is taken.
    QHash<int, int> m_nextColumn; ///< By row: where findColumn() goes on.
    QHash<int, int> m_nextRow;    ///< By column: where findRow() goes on.
    int m_nextWholeRow = 0;
};

/// In which turn a wish is met: 0 to 3.
int turnOf(const Cells& wish)
{
    if (wish.row >= 0) {
        return wish.column >= 0 ? 0 : 1;
    }
    return wish.column >= 0 ? 2 : 3;
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

QString placementFault(const QString& param, const QString& value)
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

Placement::Placement(const QVector<Cells>& wishes) : m_cells(wishes)
{
    QHash<QString, Grid> grids;
    for (const Cells& wish : wishes) {
        if (!wish.area.isEmpty() && !grids.contains(wish.area)) {
            m_areas.append(wish.area);
            grids.insert(wish.area, {});
        }
    }
    const QString firstArea = m_areas.value(0);
    QVector<int> turns[4];
    for (int i = 0; i < m_cells.size(); ++i) {
        if (m_cells[i].area.isEmpty()) {
            m_cells[i].area = firstArea;
        }
        turns[turnOf(m_cells[i])].append(i);
    }
    for (int turn = 0; turn < 4; ++turn) {
        for (const int i : std::as_const(turns[turn])) {
            Grid& grid = grids[m_cells[i].area];
            if (turn > 0) {
                grid.findPlace(m_cells[i]);
            }
            const auto meetings = grid.take(m_cells[i], i);
            for (const Grid::Meeting& meeting : meetings) {
                m_overlaps.append({i, meeting.owner, meeting.row, meeting.column});
            }
        }
    }
}

} // namespace norvo
