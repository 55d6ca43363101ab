// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

class QWidget;

namespace norvo {

/// Has QML drawn with so many pixels for each of its widget's, both ways, because the page that it
/// stands on is drawn larger or smaller by that factor. `quickWidget` is a QQuickWidget; where QML
/// is drawn by OpenGL nothing changes.
NORVOGUI_EXPORT void sharpenQuickWidget(QWidget& quickWidget, double factor);

} // namespace norvo
