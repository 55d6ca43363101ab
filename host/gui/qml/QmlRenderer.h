#pragma once

#include "norvo/Export.h"

namespace norvo {

/// Qt Quick inside a widget ends the process where it finds no OpenGL. Where there is none, and
/// nobody has chosen a renderer yet, switches to the software renderer. Must come before the first
/// Qt Quick window; looks only once.
NORVOGUI_EXPORT void chooseQuickRenderer();

} // namespace norvo
