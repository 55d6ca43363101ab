// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/ParamEdit.h"

#include "host/panel/file/EditDistance.h"
#include "host/yaml/Quote.h"

namespace norvo {

namespace {

using Path = YamlEdit::Path;

bool isSameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

const YamlNode* valueOf(const YamlNode& map, const QString& key)
{
    for (const YamlEntry& entry : map.entries) {
        if (entry.key && entry.key->text == key) {
            return entry.value.get();
        }
    }
    return nullptr;
}

/// The keys that lead to the parameter in these maps; empty when it is not there.
Path findParam(const YamlNode& map, const QString& name)
{
    for (const YamlEntry& entry : map.entries) {
        if (!entry.key) {
            return {};
        }
        const QString& key = entry.key->text;
        if (isSameName(key, name)) {
            return {key};
        }
        if (entry.value->kind == YamlNode::Kind::Map &&
            name.startsWith(key + '/', Qt::CaseInsensitive)) {
            const Path below = findParam(*entry.value, name.mid(key.size() + 1));
            if (!below.isEmpty()) {
                return Path{key} + below;
            }
        }
    }
    return {};
}

enum class Spelling { Unknown, Nested, Joined };

/// How a device writes parameters of this group, such as "widget", and under which key.
Spelling spellingOf(const YamlNode& params, const QString& group, QString& key)
{
    Spelling spelling = Spelling::Unknown;
    for (const YamlEntry& entry : params.entries) {
        if (!entry.key) {
            break;
        }
        if (isSameName(entry.key->text, group)) {
            key = entry.key->text;
            return Spelling::Nested;
        }
        if (entry.key->text.startsWith(group + '/', Qt::CaseInsensitive)) {
            spelling = Spelling::Joined;
        }
    }
    return spelling;
}

/// How most other devices write them.
Spelling usualSpelling(const YamlNode& devices, const QString& group)
{
    int nested = 0;
    int joined = 0;
    for (const YamlEntry& device : devices.entries) {
        const YamlNode* const params = valueOf(*device.value, "params");
        QString key;
        const Spelling spelling = params ? spellingOf(*params, group, key) : Spelling::Unknown;
        nested += spelling == Spelling::Nested ? 1 : 0;
        joined += spelling == Spelling::Joined ? 1 : 0;
    }
    return nested > joined ? Spelling::Nested : Spelling::Joined;
}

YamlEdit::Error insertParam(YamlEdit& edit, const Path& params, const QString& name,
                            const YamlNodePtr& value)
{
    const YamlNode& devices = *valueOf(edit.root(), "devices");
    const YamlNode& device = *valueOf(devices, params[1]);
    const YamlNode* const known = valueOf(device, "params");
    const int slash = name.indexOf('/');
    QString key = name.left(slash);
    const QString rest = name.mid(slash + 1);
    Spelling spelling = Spelling::Joined;
    if (slash > 0) {
        spelling = known ? spellingOf(*known, key, key) : Spelling::Unknown;
        if (spelling == Spelling::Nested) {
            return edit.insert(params + Path{key}, rest, value);
        }
        spelling = spelling == Spelling::Unknown ? usualSpelling(devices, key) : spelling;
    }
    const bool isNested = spelling == Spelling::Nested;
    const QString newKey = isNested ? key : name;
    const YamlNodePtr newValue = isNested ? YamlTree::map({{rest, value}}) : value;
    return known ? edit.insert(params, newKey, newValue)
                 : edit.insert({params[0], params[1]}, "params",
                               YamlTree::map({{newKey, newValue}}), "device");
}

} // namespace

bool ParamEdit::hasDevice(const YamlEdit& edit, const QString& device)
{
    const YamlNode* const devices = valueOf(edit.root(), "devices");
    return devices && valueOf(*devices, device);
}

YamlEdit::Error ParamEdit::setParam(YamlEdit& edit, const QString& device, const QString& name,
                                    const QString& value)
{
    if (edit.error()) {
        return edit.error();
    }
    const YamlNode* const devices = valueOf(edit.root(), "devices");
    const YamlNode* const map = devices ? valueOf(*devices, device) : nullptr;
    if (!map) {
        QStringList ids;
        for (size_t i = 0; devices && i < devices->entries.size(); ++i) {
            ids += devices->entries[i].key ? devices->entries[i].key->text : QString();
        }
        return TextError{{}, "there is no device " + inQuotes(device) + didYouMean(device, ids)};
    }
    const Path params{"devices", device, "params"};
    const YamlNode* const known = valueOf(*map, "params");
    const Path found = known ? findParam(*known, name) : Path();
    return found.isEmpty() ? insertParam(edit, params, name, YamlTree::text(value))
                           : edit.setText(params + found, value);
}

YamlEdit::Error ParamEdit::removeParam(YamlEdit&, const QString&, const QString&)
{
    return TextError{{}, "not done yet"};
}

} // namespace norvo
