// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

namespace norvo {

/// Edits of a panel's own keys that hold a text, such as "title" and "theme".
namespace PanelKeyEdit {

/// A key that is new goes where examples have it. Whether the panel takes the value is not looked
/// at.
YamlEdit::Error set(YamlEdit& edit, const QString& key, const QString& value);
/// A key that is not there is no error.
YamlEdit::Error remove(YamlEdit& edit, const QString& key);

} // namespace PanelKeyEdit

} // namespace norvo
