// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Placement.h"

#include "host/panel/file/Diagnostics.h"
#include "host/panel/plan/Node.h"
#include "host/yaml/Quote.h"

#include "norvo/Categories.h"

#include <QHash>
#include <QRect>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

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

using Word = quint64;
constexpr int kWordBits = 64;

/// Which places along a row, or along a column, are taken.
struct Line
{
    std::vector<Word> words; ///< A bit for each place; those behind the last word are free.

    bool isTaken(int place) const
    {
        const size_t word = size_t(place / kWordBits);
        return word < words.size() && (words[word] >> (place % kWordBits) & 1) != 0;
    }

    void take(int first, int count)
    {
        const int last = std::min(first + count, Placement::kMaxLines) - 1;
        if (first > last) {
            return;
        }
        const auto at = [](int place) { return place / kWordBits; };
        words.resize(std::max(words.size(), size_t(at(last) + 1)));
        const Word firstBits = ~Word(0) << first % kWordBits;
        const Word lastBits = ~Word(0) >> (kWordBits - 1 - last % kWordBits);
        const auto begin = words.begin() + at(first);
        const auto end = words.begin() + at(last);
        *begin |= begin == end ? firstBits & lastBits : firstBits;
        if (begin != end) {
            std::fill(begin + 1, end, ~Word(0));
            *end |= lastBits;
        }
    }

    /// Takes what the other has taken from `first` on, or a little before it.
    void takeAsIn(const Line& other, int first)
    {
        words.resize(std::max(words.size(), other.words.size()));
        for (size_t i = size_t(first / kWordBits); i < other.words.size(); ++i) {
            words[i] |= other.words[i];
        }
    }

    /// Where so many places are free for the first time, from `first` on.
    int firstFree(int first, int count) const
    {
        int place = first;
        for (int free = 0; free < count; ++place) {
            free = isTaken(place) ? 0 : free + 1;
        }
        return place - count;
    }
};

/// Parallel rows, or parallel columns.
class Lines
{
public:
    void take(int line, int count, int first, int length)
    {
        const int end = std::min(line + count, Placement::kMaxLines);
        m_lines.resize(std::max(m_lines.size(), size_t(end)));
        for (int i = line; i < end; ++i) {
            m_lines[size_t(i)].take(first, length);
        }
    }

    bool isAnyTaken(int line, int count, int first, int length) const
    {
        const auto begin = m_lines.cbegin() + std::min(line, int(m_lines.size()));
        const auto end = m_lines.cbegin() + std::min(line + count, int(m_lines.size()));
        return std::any_of(begin, end,
                           [=](const Line& one) { return one.firstFree(first, length) != first; });
    }

    /// The first place that is free in all of the lines, behind what was found for that line
    /// before.
    int findPlace(int line, int count, int length)
    {
        int& next = m_next[line];
        const int place = merged(line, count, next).firstFree(next, length);
        next = place + length;
        return place;
    }

private:
    Line merged(int line, int count, int first) const
    {
        Line all;
        const int end = std::min(line + count, int(m_lines.size()));
        for (int i = line; i < end; ++i) {
            all.takeAsIn(m_lines[size_t(i)], first);
        }
        return all;
    }

    std::vector<Line> m_lines;
    QHash<int, int> m_next; ///< By line: where findPlace() goes on.
};

/// The grid of one area, as far as the requests to come need it.
struct Grid
{
    Lines rows;
    Lines columns;
    Lines whole; ///< One line: the rows in which anything is taken.
    QVector<int> fixed;
};

/// When a request is served: 0 to 3.
int passOf(const Cells& request)
{
    if (request.row >= 0) {
        return request.column >= 0 ? 0 : 1;
    }
    return request.column >= 0 ? 2 : 3;
}

/// Completes a request by the first free place that it allows, and takes its cells.
void serve(int pass, Cells& cells, Grid& grid)
{
    if (pass == 1) {
        cells.column = grid.rows.findPlace(cells.row, cells.rowspan, cells.colspan);
    } else if (pass == 2) {
        cells.row = grid.columns.findPlace(cells.column, cells.colspan, cells.rowspan);
    } else if (pass == 3) {
        cells.row = grid.whole.findPlace(0, 1, cells.rowspan);
        cells.column = 0;
    }
    if (pass < 2) {
        grid.rows.take(cells.row, cells.rowspan, cells.column, cells.colspan);
    }
    if (pass < 3) {
        grid.columns.take(cells.column, cells.colspan, cells.row, cells.rowspan);
    }
    grid.whole.take(0, 1, cells.row, cells.rowspan);
}

QRect rectOf(const Cells& cells)
{
    return {cells.column, cells.row, cells.colspan, cells.rowspan};
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

bool isPlacementParam(const QString& param)
{
    const auto is = [&param](const QString& name) {
        return param.compare(name, Qt::CaseInsensitive) == 0;
    };
    return is(kWidgetRow) || is(kWidgetColumn) || is(kWidgetRowspan) || is(kWidgetColspan) ||
           is(kWidgetArea);
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

Placement::Placement(const QVector<Cells>& requests, const QStringList& pages)
    : m_areas(pages), m_cells(requests)
{
    QHash<QString, Grid> grids;
    for (const QString& page : pages) {
        grids.insert(page, {});
    }
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
    for (int pass = 0; pass < int(std::size(passes)); ++pass) {
        for (const int i : std::as_const(passes[pass])) {
            Cells& cells = m_cells[i];
            Grid& grid = grids[cells.area];
            if (pass == 0) {
                if (grid.rows.isAnyTaken(cells.row, cells.rowspan, cells.column, cells.colspan)) {
                    findOverlaps(i, grid.fixed);
                }
                grid.fixed.append(i);
            }
            serve(pass, cells, grid);
        }
    }
}

void Placement::findOverlaps(int later, const QVector<int>& placed)
{
    const int known = m_overlaps.size();
    for (int i = 0; i < placed.size() && m_overlaps.size() < kMaxOverlaps; ++i) {
        const QRect shared = rectOf(m_cells[later]) & rectOf(m_cells[placed[i]]);
        const auto coversShared = [&](const Overlap& overlap) {
            return rectOf(m_cells[overlap.earlier]).contains(shared);
        };
        if (!shared.isEmpty() &&
            std::none_of(m_overlaps.cbegin() + known, m_overlaps.cend(), coversShared)) {
            m_overlaps.append({later, placed[i], shared.top(), shared.left()});
        }
    }
}

namespace {

void reportOverlaps(const Placement& placement, const std::vector<Node*>& nodes,
                    const QVector<DeviceSetting>& settings, Diagnostics& diagnostics)
{
    std::vector<const PlacedText*> shown;
    for (size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i]->isShowable()) {
            shown.push_back(&settings[int(i)].id);
        }
    }
    for (const Placement::Overlap& overlap : placement.overlaps()) {
        const PlacedText& later = *shown[overlap.later];
        const PlacedText& earlier = *shown[overlap.earlier];
        const QString area = placement.cells()[overlap.later].area;
        diagnostics.error(later.place, [&] {
            return QString("%1 and %2 (line %3) overlap at row %4, column %5%6")
                .arg(inQuotes(later.text), inQuotes(earlier.text),
                     QString::number(earlier.place.line), QString::number(overlap.row),
                     QString::number(overlap.column),
                     area.isEmpty() ? QString() : " of area " + inQuotes(area));
        });
    }
}

void reportHugeGrid(const QVector<DeviceSetting>& settings, const QVector<Cells>& places,
                    Diagnostics& diagnostics)
{
    for (int i = 0; i < settings.size(); ++i) {
        const Cells& cells = places[i];
        if (std::max(cells.row + cells.rowspan, cells.column + cells.colspan) >
            Placement::kMaxLines) {
            const PlacedText& id = settings[i].id;
            diagnostics.error(id.place,
                              QString("%1 would lie beyond %2 rows or columns, the limit of "
                                      "a panel")
                                  .arg(inQuotes(id.text), QString::number(Placement::kMaxLines)));
            return;
        }
    }
}

} // namespace

void reportPlacement(const Placement& placement, const std::vector<Node*>& nodes,
                     const QVector<DeviceSetting>& settings, const QVector<Cells>& places,
                     Diagnostics& diagnostics)
{
    reportOverlaps(placement, nodes, settings, diagnostics);
    reportHugeGrid(settings, places, diagnostics);
}

} // namespace norvo
