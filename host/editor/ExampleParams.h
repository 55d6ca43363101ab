// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QVector>

namespace norvo {

struct TypeWords;

/// The parameters of a type's example, without those that say where it stands.
QVector<ParamSetting> exampleParams(const TypeWords& words);

} // namespace norvo
