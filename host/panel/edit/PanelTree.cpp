// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PanelTree.h"

#include "host/panel/file/EditDistance.h"
#include "host/yaml/Quote.h"

#include "norvo/Categories.h"

namespace norvo {

namespace {

using Path = YamlEdit::Path;

/// The keys that lead to the parameter in these maps; empty when it is not there.
Path findIn(const YamlNode& map, const QString& name)
{
    for (const YamlEntry& entry : map.entries) {
        if (!entry.key) {
            return {};
        }
        const QString& key = entry.key->text;
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return {key};
        }
        if (entry.value->kind == YamlNode::Kind::Map &&
            name.startsWith(key + '/', Qt::CaseInsensitive)) {
            const Path below = findIn(*entry.value, name.mid(key.size() + 1));
            if (!below.isEmpty()) {
                return Path{key} + below;
            }
        }
    }
    return {};
}

} // namespace

const YamlNode* PanelTree::valueOf(const YamlNode* map, const QString& key)
{
    for (size_t i = 0; map && i < map->entries.size(); ++i) {
        const YamlEntry& entry = map->entries[i];
        if (entry.key && entry.key->text == key) {
            return entry.value.get();
        }
    }
    return nullptr;
}

const YamlNode* PanelTree::devices(const YamlEdit& edit)
{
    return valueOf(&edit.root(), "devices");
}

const YamlNode* PanelTree::device(const YamlEdit& edit, const QString& id)
{
    return valueOf(devices(edit), id);
}

QStringList PanelTree::deviceIds(const YamlEdit& edit)
{
    QStringList ids;
    const YamlNode* const map = devices(edit);
    for (size_t i = 0; map && i < map->entries.size(); ++i) {
        const YamlEntry& entry = map->entries[i];
        ids += entry.key ? entry.key->text : QString();
    }
    return ids;
}

bool PanelTree::isUse(const YamlNode& device)
{
    return valueOf(&device, "use") != nullptr;
}

YamlEdit::Error PanelTree::noDevice(const YamlEdit& edit, const QString& id)
{
    return TextError{{}, "there is no device " + inQuotes(id) + didYouMean(id, deviceIds(edit))};
}

Path PanelTree::findParam(const YamlNode& device, const QString& name)
{
    const YamlNode* const params = valueOf(&device, "params");
    return params ? findIn(*params, name) : Path();
}

std::optional<QString> PanelTree::paramOf(const YamlNode& device, const QString& name)
{
    const YamlNode* node = valueOf(&device, "params");
    const Path path = findParam(device, name);
    for (const QString& key : path) {
        node = valueOf(node, key);
    }
    return path.isEmpty() || !node->isText() ? std::nullopt : std::make_optional(node->text);
}

QStringList PanelTree::pages(const YamlEdit& edit)
{
    QStringList names;
    const YamlNode* const list = valueOf(&edit.root(), "pages");
    for (size_t i = 0; list && i < list->entries.size(); ++i) {
        names += list->entries[i].value->text;
    }
    return names;
}

QString PanelTree::areaOf(const YamlNode& device)
{
    if (isUse(device)) {
        const YamlNode* const area = valueOf(valueOf(&device, "at"), "area");
        return area ? area->text : QString();
    }
    return paramOf(device, kWidgetArea).value_or(QString());
}

QString PanelTree::firstArea(const YamlEdit& edit)
{
    const QStringList listed = pages(edit);
    if (!listed.isEmpty()) {
        return listed[0];
    }
    const YamlNode* const map = devices(edit);
    for (size_t i = 0; map && i < map->entries.size(); ++i) {
        QString area = areaOf(*map->entries[i].value);
        if (!area.isEmpty()) {
            return area;
        }
    }
    return {};
}

QString PanelTree::keyBefore(const YamlEdit& edit, const QString& key)
{
    static const QStringList order{"title",    "theme",     "touch",   "design",      "fit",
                                   "language", "pages",     "rows",    "columns",     "access",
                                   "include",  "templates", "devices", "connections", "alarms",
                                   "audit",    "history"};
    QString before;
    for (const QString& one : order.mid(0, order.indexOf(key))) {
        before = valueOf(&edit.root(), one) ? one : before;
    }
    return before;
}

YamlEdit::Error PanelTree::insertKey(YamlEdit& edit, const QString& key, const YamlNodePtr& value)
{
    const QString before = keyBefore(edit, key);
    return before.isNull() && edit.root().kind == YamlNode::Kind::Map
               ? edit.insertFirst({}, key, value)
               : edit.insert({}, key, value, before);
}

YamlNodePtr PanelTree::list(const QVector<YamlNodePtr>& values, bool isFlow)
{
    auto node = std::make_shared<YamlNode>();
    node->kind = YamlNode::Kind::List;
    node->isFlow = isFlow;
    for (const YamlNodePtr& value : values) {
        YamlEntry entry;
        entry.value = value;
        node->entries.push_back(entry);
    }
    return node;
}

} // namespace norvo
