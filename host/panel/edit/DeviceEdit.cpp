// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/DeviceEdit.h"

#include "host/panel/edit/ConnectionEdit.h"
#include "host/panel/edit/Mentions.h"
#include "host/panel/edit/OwnDevices.h"
#include "host/panel/edit/PanelTree.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/yaml/Quote.h"

#include "norvo/Categories.h"
#include "norvo/Ids.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace norvo {

namespace {

using Error = DeviceEdit::Error;

bool isFree(const OwnDevices& devices, const QString& id)
{
    return devices.ownerOf(id).isEmpty();
}

/// Whether any other device or use names this page.
bool isAreaNamedElsewhere(const YamlEdit& edit, const QString& area, const QString& device)
{
    const YamlNode* const devices = PanelTree::devices(edit);
    for (size_t i = 0; devices && i < devices->entries.size(); ++i) {
        const YamlEntry& entry = devices->entries[i];
        if (entry.key && entry.key->text != device && PanelTree::areaOf(*entry.value) == area) {
            return true;
        }
    }
    return false;
}

Error placeInArea(YamlEdit& edit, const QString& device, const QString& wanted)
{
    const QString given = PanelTree::areaOf(*PanelTree::device(edit, device));
    const QString first = PanelTree::firstArea(edit);
    if (wanted == given || (given.isEmpty() && wanted == first)) {
        return std::nullopt;
    }
    const bool isImplied =
        wanted.isEmpty() || (wanted == first && !isAreaNamedElsewhere(edit, wanted, device));
    return isImplied ? ParamEdit::removeParam(edit, device, kWidgetArea)
                     : ParamEdit::setParam(edit, device, kWidgetArea, wanted);
}

/// A comparison that spares what means the same, as " 1".
bool isNumber(const std::optional<QString>& text, int number)
{
    bool ok = false;
    return text && text->trimmed().toInt(&ok) == number && ok;
}

Error checkNewId(const YamlEdit& edit, const QString& id)
{
    if (id.isEmpty()) {
        return TextError{{}, "a device needs an id"};
    }
    if (!isId(id)) {
        return TextError{
            {},
            QString("the id %1 may hold letters, digits, \"_\" and \"-\" only").arg(inQuotes(id))};
    }
    if (!isFree(OwnDevices(edit), id)) {
        return TextError{{}, QString("the id %1 is in use").arg(inQuotes(id))};
    }
    return std::nullopt;
}

Error insertDevice(YamlEdit& edit, const QString& id, const YamlNodePtr& value,
                   const QString& after = {})
{
    return PanelTree::devices(edit)
               ? edit.insert({"devices"}, id, value, after)
               : PanelTree::insertKey(edit, "devices", YamlTree::map({{id, value}}));
}

/// The same values without anchors and aliases, to be written elsewhere.
YamlNodePtr plain(const YamlNode& node)
{
    auto copy = std::make_shared<YamlNode>();
    copy->kind = node.kind == YamlNode::Kind::Absent ? YamlNode::Kind::Text : node.kind;
    copy->text = node.text;
    for (const YamlEntry& entry : node.entries) {
        YamlEntry one;
        one.key = entry.key ? plain(*entry.key) : nullptr;
        one.value = plain(*entry.value);
        copy->entries.push_back(one);
    }
    return copy;
}

/// The tree with the number at these keys moved; the same where there is none from 0 on.
YamlNodePtr moved(const YamlNodePtr& node, const YamlEdit::Path& path, int by)
{
    auto copy = std::make_shared<YamlNode>(*node);
    if (path.isEmpty()) {
        bool ok = false;
        const int number = node->text.trimmed().toInt(&ok);
        if (ok && number >= 0) {
            copy->text = QString::number(std::clamp(number + by, 0, Cells::kLimit - 1));
        }
        return copy;
    }
    for (YamlEntry& entry : copy->entries) {
        if (entry.key && entry.key->text == path[0]) {
            entry.value = moved(entry.value, path.mid(1), by);
        }
    }
    return copy;
}

/// A device or a use that has been copied, at its new cells.
YamlNodePtr moved(const YamlNode& device, const Cells& by)
{
    YamlNodePtr node = plain(device);
    if (PanelTree::isUse(device)) {
        return moved(moved(node, {"at", "row"}, by.row), {"at", "column"}, by.column);
    }
    for (const auto& [name, lines] :
         QVector<QPair<QString, int>>{{kWidgetRow, by.row}, {kWidgetColumn, by.column}}) {
        const YamlEdit::Path found = PanelTree::findParam(device, name);
        node = found.isEmpty() ? node : moved(node, YamlEdit::Path{"params"} + found, lines);
    }
    return node;
}

/// One that begins or ends elsewhere is left out: a device of that name would be another one here.
Error pasteConnections(YamlEdit& edit, const YamlEdit& source,
                       const QHash<QString, QString>& newIds)
{
    const OwnDevices sources(source);
    const YamlNode* const connections = PanelTree::valueOf(&source.root(), "connections");
    for (size_t i = 0; connections && i < connections->entries.size(); ++i) {
        QString text = connections->entries[i].value->text;
        const QVector<Mention> ends = Mentions::in(text);
        bool isInside = true;
        for (int end = ends.size() - 1; end >= 0; --end) {
            const QString& device = ends[end].device;
            const QString owner = sources.ownerOf(device);
            isInside = isInside && newIds.contains(owner);
            text.replace(ends[end].deviceAt, device.size(),
                         newIds.value(owner) + device.mid(owner.size()));
        }
        Error error = isInside ? ConnectionEdit::addText(edit, text) : std::nullopt;
        if (error) {
            return error;
        }
    }
    return std::nullopt;
}

} // namespace

QString DeviceEdit::freeId(const YamlEdit& edit, const QString& base)
{
    static const QRegularExpression digits("\\d+$");
    const OwnDevices devices(edit);
    QString id;
    for (const QChar c : base) {
        id += isId(QString(c)) ? c : QChar('_');
    }
    id = id.isEmpty() ? QString("device") : id;
    if (const QString use = devices.ownerOf(id); !use.isEmpty() && use != id) {
        id = id.mid(use.size() + 1); // What begins so is the use's own.
    }
    if (isFree(devices, id)) {
        return id;
    }
    const QString number = digits.match(id).captured();
    const QString stem = number.size() < id.size() ? id.chopped(number.size()) : id;
    for (int n = 2;; ++n) {
        if (isFree(devices, stem + QString::number(n))) {
            return stem + QString::number(n);
        }
    }
}

Error DeviceEdit::add(YamlEdit& edit, const NewDevice& device, const QString& after)
{
    if (edit.error()) {
        return edit.error();
    }
    if (Error error = checkNewId(edit, device.id)) {
        return error;
    }
    std::vector<std::pair<QString, YamlNodePtr>> entries{{"device", YamlTree::text(device.type)}};
    if (!device.params.isEmpty()) {
        entries.emplace_back("params", ParamEdit::newParams(edit, device.params));
    }
    return insertDevice(edit, device.id, YamlTree::map(entries), after);
}

Error DeviceEdit::remove(YamlEdit& edit, const QString& device)
{
    if (edit.error()) {
        return edit.error();
    }
    if (!PanelTree::device(edit, device)) {
        return PanelTree::noDevice(edit, device);
    }
    YamlEdit next = edit;
    const OwnDevices devices(edit);
    Error error = Mentions::remove(
        next, [&](const Mention& mention) { return devices.ownerOf(mention.device) == device; });
    error = error ? error : next.remove({"devices", device});
    if (!error) {
        edit = next;
    }
    return error;
}

Error DeviceEdit::rename(YamlEdit& edit, const QString& device, const QString& newId)
{
    if (edit.error()) {
        return edit.error();
    }
    if (!PanelTree::device(edit, device)) {
        return PanelTree::noDevice(edit, device);
    }
    if (device == newId) {
        return std::nullopt;
    }
    if (Error error = checkNewId(edit, newId)) {
        return error;
    }
    YamlEdit next = edit;
    const OwnDevices devices(edit);
    Error error = Mentions::replace(
        next, [&](const Mention& mention) { return devices.ownerOf(mention.device) == device; },
        true, [&](const Mention& mention) { return newId + mention.device.mid(device.size()); });
    error = error ? error : next.renameKey({"devices", device}, newId);
    if (!error) {
        edit = next;
    }
    return error;
}

Error DeviceEdit::place(YamlEdit& edit, const QString& device, const Cells& cells)
{
    if (edit.error()) {
        return edit.error();
    }
    const YamlNode* const map = PanelTree::device(edit, device);
    if (!map) {
        return PanelTree::noDevice(edit, device);
    }
    const QVector<QPair<QString, int>> wanted{{kWidgetRow, cells.row},
                                              {kWidgetColumn, cells.column},
                                              {kWidgetRowspan, cells.rowspan},
                                              {kWidgetColspan, cells.colspan}};
    ParamEdit::Params params;
    QStringList unneeded;
    for (const auto& [name, number] : wanted) {
        const auto given = PanelTree::paramOf(*map, name);
        const bool isDefault = number == (name == kWidgetRow || name == kWidgetColumn ? -1 : 1);
        if (isNumber(given, number) || (!given && isDefault)) {
            continue;
        }
        if (isDefault) {
            unneeded += name;
        } else {
            params.append({name, QString::number(number)});
        }
    }
    YamlEdit next = edit;
    Error error = params.isEmpty() ? std::nullopt : ParamEdit::setParams(next, device, params);
    for (const QString& name : unneeded) {
        error = error ? error : ParamEdit::removeParam(next, device, name);
    }
    error = error ? error : placeInArea(next, device, cells.area);
    if (!error) {
        edit = next;
    }
    return error;
}

Error DeviceEdit::setKey(YamlEdit& edit, const QString& device, const QString& key,
                         const QString& value)
{
    if (edit.error()) {
        return edit.error();
    }
    const YamlNode* const map = PanelTree::device(edit, device);
    if (!map) {
        return PanelTree::noDevice(edit, device);
    }
    const YamlEdit::Path path{"devices", device};
    const bool isThere = PanelTree::valueOf(map, key);
    if (value.isEmpty()) {
        return isThere ? edit.remove(path + YamlEdit::Path{key}) : std::nullopt;
    }
    return isThere ? edit.setText(path + YamlEdit::Path{key}, value)
                   : edit.insert(path, key, YamlTree::text(value), "device");
}

QByteArray DeviceEdit::copy(const YamlEdit& edit, const QStringList& devices)
{
    YamlEdit copied{QByteArray()};
    const OwnDevices own(edit);
    const YamlNode* const map = PanelTree::devices(edit);
    for (size_t i = 0; map && i < map->entries.size(); ++i) {
        const YamlEntry& entry = map->entries[i];
        if (entry.key && devices.contains(entry.key->text)) {
            insertDevice(copied, entry.key->text, plain(*entry.value));
        }
    }
    const YamlNode* const connections = PanelTree::valueOf(&edit.root(), "connections");
    for (size_t i = 0; connections && i < connections->entries.size(); ++i) {
        const QString& text = connections->entries[i].value->text;
        const QVector<Mention> ends = Mentions::in(text);
        if (std::all_of(ends.cbegin(), ends.cend(), [&](const Mention& end) {
                return devices.contains(own.ownerOf(end.device));
            })) {
            ConnectionEdit::addText(copied, text);
        }
    }
    return copied.text();
}

Error DeviceEdit::paste(YamlEdit& edit, const QByteArray& copied, const Cells& moveBy, NewIds& ids)
{
    const YamlEdit source(copied);
    if (edit.error() || source.error()) {
        return edit.error() ? edit.error() : source.error();
    }
    const YamlNode* const map = PanelTree::devices(source);
    if (!map || map->kind != YamlNode::Kind::Map) {
        return TextError{{}, "there are no devices in what is to be pasted"};
    }
    YamlEdit next = edit;
    QHash<QString, QString> newIds;
    NewIds added;
    for (const YamlEntry& entry : map->entries) {
        const QString id = freeId(next, entry.key->text);
        newIds.insert(entry.key->text, id);
        added.append({entry.key->text, id});
        Error error = insertDevice(next, id, moved(*entry.value, moveBy));
        error = error ? error : placeInArea(next, id, moveBy.area);
        if (error) {
            return error;
        }
    }
    if (Error error = pasteConnections(next, source, newIds)) {
        return error;
    }
    edit = next;
    ids = added;
    return std::nullopt;
}

} // namespace norvo
