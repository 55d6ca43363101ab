// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <optional>

namespace norvo {

struct TypeWords;

/// The smallest panel that the words of a type give as an example.
namespace TypeExample {

PanelDescription panel(const TypeWords& words); ///< Empty where there is none.

/// The device of that type in it.
std::optional<DeviceSetting> device(const TypeWords& words);

} // namespace TypeExample

} // namespace norvo
