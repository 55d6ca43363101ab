// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

namespace norvo {

/// Edits of the outputs and inputs that a panel's author names at a device.
namespace PortEdit {

using Error = YamlEdit::Error;

Error add(YamlEdit& edit, const QString& device, bool isOutput, const QString& name,
          const QString& definition);
/// Where the definition is a map, the text behind "as".
Error setDefinition(YamlEdit& edit, const QString& device, bool isOutput, const QString& name,
                    const QString& definition);
/// Wherever the file names it, too.
Error rename(YamlEdit& edit, const QString& device, bool isOutput, const QString& name,
             const QString& newName);
/// With its connections and alarms.
Error remove(YamlEdit& edit, const QString& device, bool isOutput, const QString& name);

} // namespace PortEdit

} // namespace norvo
