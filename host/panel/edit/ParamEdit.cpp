// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/ParamEdit.h"

#include "host/panel/edit/PanelTree.h"

#include "norvo/Categories.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace norvo {

namespace {

using Params = ParamEdit::Params;
using Path = YamlEdit::Path;

constexpr int kMaxLine = 100; // Characters.

enum class Spelling { Unknown, Nested, Joined };

/// How a device writes parameters of this group, such as "widget", and under which key.
Spelling spellingOf(const YamlNode& params, const QString& group, QString& key)
{
    Spelling spelling = Spelling::Unknown;
    for (const YamlEntry& entry : params.entries) {
        if (!entry.key) {
            break;
        }
        if (entry.key->text.compare(group, Qt::CaseInsensitive) == 0) {
            key = entry.key->text;
            return Spelling::Nested;
        }
        if (entry.key->text.startsWith(group + '/', Qt::CaseInsensitive)) {
            spelling = Spelling::Joined;
        }
    }
    return spelling;
}

/// How most other devices write them; nested where none does.
Spelling usualSpelling(const YamlEdit& edit, const QString& group)
{
    int nested = 0;
    int joined = 0;
    const YamlNode* const devices = PanelTree::devices(edit);
    for (size_t i = 0; devices && i < devices->entries.size(); ++i) {
        const YamlNode* const params =
            PanelTree::valueOf(devices->entries[i].value.get(), "params");
        QString key;
        const Spelling spelling = params ? spellingOf(*params, group, key) : Spelling::Unknown;
        nested += spelling == Spelling::Nested ? 1 : 0;
        joined += spelling == Spelling::Joined ? 1 : 0;
    }
    return nested > joined || joined == 0 ? Spelling::Nested : Spelling::Joined;
}

/// Which of these placement parameters of the map a new one is written behind; null: last.
QString placeBehind(const YamlNode& map, const QString& prefix, const QString& name)
{
    static const QStringList order{"row", "column", "rowspan", "colspan"};
    const QString key = prefix.isEmpty() ? name : name.mid(prefix.size());
    QString behind;
    for (const QString& one : order.mid(0, std::max(order.indexOf(key.toLower()), 0))) {
        for (const YamlEntry& entry : map.entries) {
            const bool isIt =
                entry.key && entry.key->text.compare(prefix + one, Qt::CaseInsensitive) == 0;
            behind = isIt ? entry.key->text : behind;
        }
    }
    return behind;
}

/// A position stands before what else a widget has.
YamlEdit::Error insertParam(YamlEdit& edit, const Path& path, const YamlNode& map,
                            const QString& prefix, const QString& name, const QString& value)
{
    const QString behind = placeBehind(map, prefix, name);
    const bool isPosition = path.last().compare(kWidgetGroup, Qt::CaseInsensitive) == 0 &&
                            (name == "row" || name == "column");
    return isPosition && behind.isNull() && !map.entries.empty()
               ? edit.insertFirst(path, name, YamlTree::text(value))
               : edit.insert(path, name, YamlTree::text(value), behind);
}

/// The first of these parameters, none of which the device gives, with those that are written in
/// one with it.
YamlEdit::Error insertFirst(YamlEdit& edit, const QString& device, Params& params)
{
    const Path path{"devices", device, "params"};
    const YamlNode* const known = PanelTree::valueOf(PanelTree::device(edit, device), "params");
    if (!known) {
        const YamlNodePtr all = ParamEdit::newParams(edit, params);
        params.clear();
        return edit.insert(path.mid(0, 2), "params", all, "device");
    }
    const auto [name, value] = params[0];
    const int slash = name.indexOf('/');
    const QString group = name.left(std::max(slash, 0));
    QString key = group;
    Spelling spelling = slash > 0 ? spellingOf(*known, group, key) : Spelling::Joined;
    if (spelling == Spelling::Nested) {
        params.removeFirst();
        const YamlNode* const map = PanelTree::valueOf(known, key);
        return insertParam(edit, path + Path{key}, *map, {}, name.mid(slash + 1), value);
    }
    spelling = spelling == Spelling::Unknown ? usualSpelling(edit, group) : spelling;
    if (spelling == Spelling::Joined) {
        params.removeFirst();
        return insertParam(edit, path, *known, slash > 0 ? group + '/' : QString(), name, value);
    }
    std::vector<std::pair<QString, YamlNodePtr>> together;
    const auto isOfGroup = [&](const QPair<QString, QString>& param) {
        return param.first.startsWith(group + '/', Qt::CaseInsensitive);
    };
    for (const auto& param : params) {
        if (isOfGroup(param)) {
            together.emplace_back(param.first.mid(slash + 1), YamlTree::text(param.second));
        }
    }
    params.erase(std::remove_if(params.begin(), params.end(), isOfGroup), params.end());
    return edit.insert(path, group, YamlTree::map(together));
}

/// Who writes by hand breaks a line that becomes too long, and leaves one that was long already.
YamlEdit::Error breakLongLines(const YamlEdit& before, YamlEdit& edit, const QString& device)
{
    for (const Path& map : {Path{"devices", device}, Path{"devices", device, "params"}}) {
        const bool wasLong = before.lineLength(map) > kMaxLine;
        if (!wasLong && edit.lineLength(map) > kMaxLine) {
            if (YamlEdit::Error error = edit.unfold(map)) {
                return error;
            }
        }
    }
    return std::nullopt;
}

} // namespace

bool ParamEdit::hasDevice(const YamlEdit& edit, const QString& device)
{
    return PanelTree::device(edit, device) != nullptr;
}

YamlEdit::Error ParamEdit::setParam(YamlEdit& edit, const QString& device, const QString& name,
                                    const QString& value)
{
    return setParams(edit, device, {{name, value}});
}

YamlEdit::Error ParamEdit::setParams(YamlEdit& edit, const QString& device, const Params& params)
{
    if (edit.error()) {
        return edit.error();
    }
    if (!hasDevice(edit, device)) {
        return PanelTree::noDevice(edit, device);
    }
    YamlEdit next = edit;
    Params missing;
    std::vector<std::pair<Path, QString>> texts;
    for (const auto& [name, value] : params) {
        const Path found = PanelTree::findParam(*PanelTree::device(next, device), name);
        if (found.isEmpty()) {
            missing.append({name, value});
        } else {
            texts.emplace_back(Path{"devices", device, "params"} + found, value);
        }
    }
    if (YamlEdit::Error error = next.setTexts(texts)) {
        return error;
    }
    while (!missing.isEmpty()) {
        if (YamlEdit::Error error = insertFirst(next, device, missing)) {
            return error;
        }
    }
    if (YamlEdit::Error error = breakLongLines(edit, next, device)) {
        return error;
    }
    edit = next;
    return std::nullopt;
}

YamlEdit::Error ParamEdit::removeParam(YamlEdit& edit, const QString& device, const QString& name)
{
    if (edit.error()) {
        return edit.error();
    }
    if (!hasDevice(edit, device)) {
        return PanelTree::noDevice(edit, device);
    }
    const YamlNode& map = *PanelTree::device(edit, device);
    const Path found = PanelTree::findParam(map, name);
    if (found.isEmpty()) {
        return std::nullopt;
    }
    // A map goes with the last that it holds.
    Path path{"devices", device, "params"};
    const YamlNode* node = PanelTree::valueOf(&map, "params");
    Path removed = path;
    for (const QString& key : found) {
        path += key;
        removed = node->entries.size() > 1 ? path : removed;
        node = PanelTree::valueOf(node, key);
    }
    return edit.remove(removed);
}

YamlNodePtr ParamEdit::newParams(const YamlEdit& edit, const Params& params)
{
    std::vector<std::pair<QString, YamlNodePtr>> entries;
    QStringList groups;
    for (const auto& param : params) {
        const int slash = param.first.indexOf('/');
        const QString group = param.first.left(std::max(slash, 0));
        if (slash <= 0 || usualSpelling(edit, group) == Spelling::Joined) {
            entries.emplace_back(param.first, YamlTree::text(param.second));
        } else if (!groups.contains(group)) {
            groups.append(group);
            std::vector<std::pair<QString, YamlNodePtr>> together;
            for (const auto& one : params) {
                if (one.first.startsWith(group + '/')) {
                    together.emplace_back(one.first.mid(slash + 1), YamlTree::text(one.second));
                }
            }
            entries.emplace_back(group, YamlTree::map(together));
        }
    }
    return YamlTree::map(entries);
}

} // namespace norvo
