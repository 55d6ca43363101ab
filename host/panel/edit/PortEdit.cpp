// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PortEdit.h"

#include "host/panel/edit/Mentions.h"
#include "host/panel/edit/PanelTree.h"
#include "host/yaml/Quote.h"

#include "norvo/Ids.h"

namespace norvo {

namespace {

using Error = PortEdit::Error;
using Path = YamlEdit::Path;

QString keyOf(bool isOutput)
{
    return isOutput ? "outputs" : "inputs";
}

const YamlNode* portsOf(const YamlEdit& edit, const QString& device, bool isOutput)
{
    return PanelTree::valueOf(PanelTree::device(edit, device), keyOf(isOutput));
}

/// Why the device has no such port.
Error checkPort(const YamlEdit& edit, const QString& device, bool isOutput, const QString& name)
{
    if (edit.error()) {
        return edit.error();
    }
    if (!PanelTree::device(edit, device)) {
        return PanelTree::noDevice(edit, device);
    }
    return PanelTree::valueOf(portsOf(edit, device, isOutput), name)
               ? std::nullopt
               : Error(TextError{{},
                                 QString("%1 has no %2 in its %3")
                                     .arg(device, inQuotes(name), keyOf(isOutput))});
}

/// Why the device cannot have one more of this name.
Error checkNewName(const YamlEdit& edit, const QString& device, const QString& name)
{
    if (!isId(name)) {
        return TextError{{},
                         QString("the name %1 may hold letters, digits, \"_\" and \"-\" only")
                             .arg(inQuotes(name))};
    }
    return PanelTree::valueOf(portsOf(edit, device, true), name) ||
                   PanelTree::valueOf(portsOf(edit, device, false), name)
               ? Error(TextError{{}, QString("%1 has %2 already").arg(device, inQuotes(name))})
               : std::nullopt;
}

Mentions::Filter mentionsOf(const QString& device, bool isOutput, const QString& name)
{
    return [=](const Mention& mention) {
        return mention.device == device && mention.method == name && mention.isSource == isOutput;
    };
}

} // namespace

Error PortEdit::add(YamlEdit& edit, const QString& device, bool isOutput, const QString& name,
                    const QString& definition)
{
    if (edit.error()) {
        return edit.error();
    }
    const YamlNode* const map = PanelTree::device(edit, device);
    if (!map) {
        return PanelTree::noDevice(edit, device);
    }
    if (Error error = checkNewName(edit, device, name)) {
        return error;
    }
    const YamlNodePtr text = YamlTree::text(definition);
    if (portsOf(edit, device, isOutput)) {
        return edit.insert({"devices", device, keyOf(isOutput)}, name, text);
    }
    QString behind = "device";
    for (const QString& key : QStringList{"params", isOutput ? "params" : "outputs"}) {
        behind = PanelTree::valueOf(map, key) ? key : behind;
    }
    return edit.insert({"devices", device}, keyOf(isOutput), YamlTree::map({{name, text}}), behind);
}

Error PortEdit::setDefinition(YamlEdit& edit, const QString& device, bool isOutput,
                              const QString& name, const QString& definition)
{
    if (Error error = checkPort(edit, device, isOutput, name)) {
        return error;
    }
    const Path path{"devices", device, keyOf(isOutput), name};
    const YamlNode& port = *PanelTree::valueOf(portsOf(edit, device, isOutput), name);
    if (port.kind != YamlNode::Kind::Map) {
        return edit.setText(path, definition);
    }
    return PanelTree::valueOf(&port, "as") ? edit.setText(path + Path{"as"}, definition)
                                           : edit.insert(path, "as", YamlTree::text(definition));
}

Error PortEdit::rename(YamlEdit& edit, const QString& device, bool isOutput, const QString& name,
                       const QString& newName)
{
    Error error = checkPort(edit, device, isOutput, name);
    error = error || name == newName ? error : checkNewName(edit, device, newName);
    if (error || name == newName) {
        return error;
    }
    YamlEdit next = edit;
    error = Mentions::replace(next, mentionsOf(device, isOutput, name), false,
                              [&](const Mention&) { return newName; });
    error = error ? error : next.renameKey({"devices", device, keyOf(isOutput), name}, newName);
    if (!error) {
        edit = next;
    }
    return error;
}

Error PortEdit::remove(YamlEdit& edit, const QString& device, bool isOutput, const QString& name)
{
    if (Error error = checkPort(edit, device, isOutput, name)) {
        return error;
    }
    YamlEdit next = edit;
    const Path ports{"devices", device, keyOf(isOutput)};
    const bool isLast = portsOf(edit, device, isOutput)->entries.size() == 1;
    Error error = Mentions::remove(next, mentionsOf(device, isOutput, name));
    error = error ? error : next.remove(isLast ? ports : ports + Path{name});
    if (!error) {
        edit = next;
    }
    return error;
}

} // namespace norvo
