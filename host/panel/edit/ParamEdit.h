// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

#include <QString>

namespace norvo {

/// Edits of the parameters of a panel file's devices.
namespace ParamEdit {

/// Whether the file itself has the device, not a template of it.
bool hasDevice(const YamlEdit& edit, const QString& device);

/// Gives a device's parameter a value. A parameter that is there is found in any case and in
/// either spelling, "widget/row" or a map "widget"; a new one is spelled as its siblings are, else
/// as in other devices. Whether the device's type has it is not looked at.
YamlEdit::Error setParam(YamlEdit& edit, const QString& device, const QString& name,
                         const QString& value);
/// The parameter has its default again. One that is not there is no error.
YamlEdit::Error removeParam(YamlEdit& edit, const QString& device, const QString& name);

} // namespace ParamEdit

} // namespace norvo
