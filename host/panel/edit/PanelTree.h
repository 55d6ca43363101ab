// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

#include <QStringList>
#include <QVector>

#include <optional>

namespace norvo {

/// What the edits look for in the tree of a panel file.
namespace PanelTree {

/// The value of a key, letter by letter; null where there is none, or `map` is null.
const YamlNode* valueOf(const YamlNode* map, const QString& key);
const YamlNode* devices(const YamlEdit& edit);                   ///< Null: none.
const YamlNode* device(const YamlEdit& edit, const QString& id); ///< Null: none of the file's own.
QStringList deviceIds(const YamlEdit& edit);                     ///< Those of uses, too.
bool isUse(const YamlNode& device);                              ///< Of a template.
YamlEdit::Error noDevice(const YamlEdit& edit, const QString& id);

/// The keys that lead to a parameter from "params"; empty when the device does not give it.
YamlEdit::Path findParam(const YamlNode& device, const QString& name);
/// The text of a parameter; none when the device does not give it.
std::optional<QString> paramOf(const YamlNode& device, const QString& name);

QStringList pages(const YamlEdit& edit); ///< That the file lists.
/// The page that a device or a use asks for; empty: none.
QString areaOf(const YamlNode& device);
/// The page of those that ask for none; empty: the file names no page.
QString firstArea(const YamlEdit& edit);

/// The key of the panel that a new one is written behind, as examples order them; null: first.
QString keyBefore(const YamlEdit& edit, const QString& key);
/// Inserts a key of the panel in its place of that order.
YamlEdit::Error insertKey(YamlEdit& edit, const QString& key, const YamlNodePtr& value);

/// `isFlow`: to be written in brackets, whatever stands around it.
YamlNodePtr list(const QVector<YamlNodePtr>& values, bool isFlow = false);

} // namespace PanelTree

} // namespace norvo
