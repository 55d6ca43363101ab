// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <vector>

namespace norvo {

class Diagnostics;
class Node;
struct DeviceSetting;

/// Where a device asks to be shown, or is.
struct Cells
{
    static constexpr int kLimit = 1000; ///< Rows, columns and spans stay below or at it.

    QString area; ///< The tab; empty: the first.
    int row = -1; ///< -1: the next free one.
    int column = -1;
    int rowspan = 1;
    int colspan = 1;

    bool operator==(const Cells& other) const
    {
        return area == other.area && row == other.row && column == other.column &&
               rowspan == other.rowspan && colspan == other.colspan;
    }
};

/// Reads the placement parameters; one that does not read, or is out of range, counts as not
/// given. `valueOf` gives a parameter's text by its name.
Cells readCells(const std::function<QString(const QString&)>& valueOf);

/// Whether it is one of the five that say where a widget stands, in any case of letters.
bool isPlacementParam(const QString& param);

/// What is wrong with the text of a placement parameter, and what would be right. Empty when
/// nothing is, or when it is no placement parameter.
QString placementError(const QString& param, const QString& value);

/// Lays the panel out: gives each request cells in the grid of its area.
///
/// Requests with row and column get them, even where they overlap. Then, in their order, those with
/// a row get its first free columns, those with a column its first free rows, and those with
/// neither the first rows that are wholly free, from column 0. The search only goes forward, so
/// that the panel shows them in the order of the file.
class Placement
{
public:
    static constexpr int kMaxOverlaps = 1000;
    static constexpr int kMaxLines = 100000; ///< Rows or columns that a grid can be shown with.

    struct Overlap
    {
        int later; ///< Number of the request.
        int earlier;
        int row; ///< The first cell, by rows, that both cover.
        int column;
    };

    /// `pages` are areas that come first, whether anything asks for them or not.
    explicit Placement(const QVector<Cells>& requests, const QStringList& pages = {});

    /// The tabs: those given, then others in the order of their first mention; empty when there are
    /// none.
    const QStringList& areas() const { return m_areas; }
    const QVector<Cells>& cells() const { return m_cells; } ///< One for each request.
    /// A pair is named once, and not at all where an earlier one covers all that the two share.
    /// After kMaxOverlaps no others are looked for.
    const QVector<Overlap>& overlaps() const { return m_overlaps; }

private:
    void findOverlaps(int later, const QVector<int>& placed);

    QStringList m_areas;
    QVector<Cells> m_cells;
    QVector<Overlap> m_overlaps;
};

/// Reports nodes that share cells, and the first that lies too far out. `settings` and `places` are
/// what the file says of all nodes and their cells, `placement` is of those that are shown.
void reportPlacement(const Placement& placement, const std::vector<Node*>& nodes,
                     const QVector<DeviceSetting>& settings, const QVector<Cells>& places,
                     Diagnostics& diagnostics);

} // namespace norvo
