// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"

class QScreen;

namespace norvo {

/// How large what is touched is at least: 12.7 mm for a finger, 20 mm for a glove.
namespace TouchSize {

/// Pixels to a millimetre, from the screen's true size; where it names none that can be true, from
/// the resolution that its texts are drawn at.
double pixelsPerMm(const QScreen& screen);

int pixels(PanelLook::Touch touch, double pixelsPerMm); ///< Rounded up.
int pixels(PanelLook::Touch touch, const QScreen& screen);

} // namespace TouchSize

} // namespace norvo
