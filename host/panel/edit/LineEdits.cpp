// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/LineEdits.h"

#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/OwnDevices.h"
#include "host/panel/edit/PanelTree.h"
#include "host/yaml/Quote.h"

#include "norvo/Categories.h"

#include <QMap>

#include <algorithm>
#include <tuple>

namespace norvo {

namespace {

using Error = YamlEdit::Error;
using Path = YamlEdit::Path;

/// What becomes of each device of the page that does not stay as it is.
Error findMoved(const CellsById& cells, const LineShift& shift, CellsById& moved)
{
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        Cells next = *one;
        int& begin = shift.isRow ? next.row : next.column;
        int& span = shift.isRow ? next.rowspan : next.colspan;
        if (one->area != shift.page || begin + span <= shift.line) {
            continue;
        }
        if (shift.by < 0 && begin == shift.line) {
            return TextError{{},
                             QString("%1 stands in this %2")
                                 .arg(inQuotes(one.key()), shift.isRow ? "row" : "column")};
        }
        (begin >= shift.line ? begin : span) += shift.by;
        if (begin >= Cells::kLimit || span > Cells::kLimit) {
            return TextError{{},
                             QString("%1 would stand beyond %2 rows or columns")
                                 .arg(inQuotes(one.key()))
                                 .arg(Cells::kLimit)};
        }
        moved.insert(one.key(), next);
    }
    return std::nullopt;
}

/// Moves all that a use has made, by its "at".
Error moveUse(YamlEdit& edit, const QString& use, const LineShift& shift)
{
    const QString key = shift.isRow ? "row" : "column";
    const YamlNode* const at = PanelTree::valueOf(PanelTree::device(edit, use), "at");
    const YamlNode* const number = PanelTree::valueOf(at, key);
    const int line = (number ? number->text.toInt() : 0) + shift.by;
    if (line < 0) {
        return TextError{{},
                         QString("%1 comes from a template; change it there").arg(inQuotes(use))};
    }
    const Path path{"devices", use, "at"};
    const YamlNodePtr text = YamlTree::text(QString::number(line));
    if (number) {
        return line > 0 || at->entries.size() > 1
                   ? edit.setText(path + Path{key}, QString::number(line))
                   : edit.remove(path);
    }
    return at ? edit.insert(path, key, text)
              : edit.insert({"devices", use}, "at", YamlTree::map({{key, text}}));
}

Error moveUses(YamlEdit& edit, const CellsById& cells, const CellsById& moved,
               const LineShift& shift)
{
    const OwnDevices devices(edit);
    QMap<QString, bool> isWhole; ///< By use: whether all of it moves, and nothing grows.
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        const QString owner = devices.ownerOf(one.key());
        if (owner.isEmpty() || owner == one.key()) {
            continue;
        }
        const Cells next = moved.value(one.key(), *one);
        const bool isMoved = shift.isRow ? next.row != one->row : next.column != one->column;
        const bool isGrown = next.rowspan != one->rowspan || next.colspan != one->colspan;
        const bool isFirst = !isWhole.contains(owner);
        if (isGrown || (!isFirst && isWhole[owner] != isMoved)) {
            return TextError{{},
                             QString("%1 comes from the template that %2 uses; change it there")
                                 .arg(inQuotes(one.key()), inQuotes(owner))};
        }
        isWhole[owner] = isMoved;
    }
    for (auto use = isWhole.cbegin(); use != isWhole.cend(); ++use) {
        Error error = *use ? moveUse(edit, use.key(), shift) : std::nullopt;
        if (error) {
            return error;
        }
    }
    return std::nullopt;
}

using Texts = std::vector<std::pair<Path, QString>>;

/// What is to be written where the device says all of its cells; false where it does not.
bool collectTexts(const YamlNode& device, const QString& id, const Cells& old, const Cells& cells,
                  Texts& texts)
{
    const std::tuple<QString, int, int> numbers[]{{kWidgetRow, old.row, cells.row},
                                                  {kWidgetColumn, old.column, cells.column},
                                                  {kWidgetRowspan, old.rowspan, cells.rowspan},
                                                  {kWidgetColspan, old.colspan, cells.colspan}};
    Texts found;
    for (const auto& [name, before, now] : numbers) {
        const bool isPosition = name == kWidgetRow || name == kWidgetColumn;
        const Path param = PanelTree::findParam(device, name);
        const bool isGiven = PanelTree::paramOf(device, name) == QString::number(before);
        if ((isPosition || before != now) && (!isGiven || (!isPosition && now == 1))) {
            return false;
        }
        if (before != now) {
            found.emplace_back(Path{"devices", id, "params"} + param, QString::number(now));
        }
    }
    texts.insert(texts.end(), found.begin(), found.end());
    return true;
}

/// The weights follow their rows or columns; a new one has the least of them.
Error shiftWeights(YamlEdit& edit, const CellsById& cells, const LineShift& shift)
{
    Path path{shift.isRow ? "rows" : "columns"};
    const YamlNode* list = PanelTree::valueOf(&edit.root(), path[0]);
    if (list && list->kind == YamlNode::Kind::Map) {
        path += shift.page;
        list = PanelTree::valueOf(list, shift.page);
    } else if (std::any_of(cells.cbegin(), cells.cend(),
                           [&](const Cells& one) { return one.area != shift.page; })) {
        return std::nullopt; // It is other pages', too.
    }
    if (!list || int(list->entries.size()) <= shift.line) {
        return std::nullopt;
    }
    if (shift.by < 0) {
        const bool isLast = list->entries.size() == 1;
        return edit.remove(isLast ? path : path + Path{QString::number(shift.line)});
    }
    int least = list->entries[0].value->text.toInt();
    QStringList weights;
    for (const YamlEntry& entry : list->entries) {
        weights += entry.value->text;
        least = std::min(least, entry.value->text.toInt());
    }
    // An entry is added behind another; those behind the new one move on by one.
    weights.insert(shift.line, QString::number(least));
    Error error = edit.add(path, YamlTree::text(weights.takeLast()));
    for (int i = shift.line; i < weights.size() && !error; ++i) {
        error = edit.setText(path + Path{QString::number(i)}, weights[i]);
    }
    return error;
}

} // namespace

Error shiftLines(YamlEdit& edit, const CellsById& cells, const LineShift& shift)
{
    if (edit.error()) {
        return edit.error();
    }
    CellsById moved;
    if (Error error = findMoved(cells, shift, moved)) {
        return error;
    }
    YamlEdit next = edit;
    Error error = moveUses(next, cells, moved, shift);
    const OwnDevices devices(edit);
    CellsById after = cells;
    bool hasUses = false;
    Texts texts;
    for (auto one = cells.cbegin(); one != cells.cend() && !error; ++one) {
        const YamlNode* const device = devices.find(one.key());
        hasUses = hasUses || !device;
        if (moved.contains(one.key()) && device) {
            after[one.key()] = moved[one.key()];
            if (!collectTexts(*device, one.key(), *one, moved[one.key()], texts)) {
                error = DeviceEdit::place(next, one.key(), moved[one.key()]);
            }
        }
    }
    error = error ? error : next.setTexts(texts);
    // What stands before the line, without cells of its own, may find another place now.
    if (!error && !hasUses) {
        error = keepPlaces(next, after, {},
                           [&](const YamlEdit& text) { return cellsByText(text, cells); });
    }
    error = error ? error : shiftWeights(next, cells, shift);
    if (!error) {
        edit = next;
    }
    return error;
}

} // namespace norvo
