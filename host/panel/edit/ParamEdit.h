// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlEdit.h"

#include <QPair>
#include <QString>
#include <QVector>

namespace norvo {

/// Edits of the parameters of a panel file's devices.
namespace ParamEdit {

using Params = QVector<QPair<QString, QString>>; ///< Names, "widget/row", and values.

/// Whether the file itself has the device, not a template of it.
bool hasDevice(const YamlEdit& edit, const QString& device);

/// Gives a device's parameter a value. A parameter that is there is found in any case and in
/// either spelling, "widget/row" or a map "widget"; a new one is spelled as its siblings are, else
/// as in other devices. Whether the device's type has it is not looked at.
YamlEdit::Error setParam(YamlEdit& edit, const QString& device, const QString& name,
                         const QString& value);
/// Several of them; where one is refused none is set.
YamlEdit::Error setParams(YamlEdit& edit, const QString& device, const Params& params);
/// The parameter has its default again. One that is not there is no error.
YamlEdit::Error removeParam(YamlEdit& edit, const QString& device, const QString& name);

/// The value of "params" of a device that is new, spelled as other devices do.
YamlNodePtr newParams(const YamlEdit& edit, const Params& params);

} // namespace ParamEdit

} // namespace norvo
