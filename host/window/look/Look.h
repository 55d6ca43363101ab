// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"

class QApplication;

namespace norvo {

/// What a panel looks like: one style, the colours of a theme and one family of fonts on every
/// platform. What a type says itself, by a style sheet or a font, stays as it says it.
namespace Look {

/// Before the widgets are made: some take colours from the application when they are made.
void apply(QApplication& application, const PanelLook& look);

} // namespace Look

} // namespace norvo
