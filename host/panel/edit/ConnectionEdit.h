// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/yaml/YamlEdit.h"

namespace norvo {

/// Edits of the connections of a panel file.
namespace ConnectionEdit {

using Error = YamlEdit::Error;

/// The number of the connection in the file's own list; -1 for one of a template.
int indexOf(const YamlEdit& edit, const ConnectionSetting& connection);

/// Writes "from -> to", each "device.method", behind the last connection of the list.
Error add(YamlEdit& edit, const QString& from, const QString& to);
Error addText(YamlEdit& edit, const QString& connection); ///< Of the whole text.
Error replace(YamlEdit& edit, int index, const QString& from, const QString& to);
/// A list that becomes empty goes with its key.
Error remove(YamlEdit& edit, int index);

} // namespace ConnectionEdit

} // namespace norvo
