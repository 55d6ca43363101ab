// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"

class QGraphicsView;
class QScreen;
class QWidget;

namespace norvo {

/// How large what is touched is at least: 12.7 mm for a finger, 20 mm for a glove.
namespace TouchSize {

/// Pixels to a millimetre, from the screen's true size; where it names none that can be true, from
/// the resolution that its texts are drawn at.
double pixelsPerMm(const QScreen& screen);

int pixels(PanelLook::Touch touch, double pixelsPerMm); ///< Rounded up.
int pixels(PanelLook::Touch touch, const QScreen& screen);
/// What shows the page of the widget at another size; null: nothing does.
QGraphicsView* scaledBy(const QWidget& widget);
/// Of the widget's own pixels, which are others than the screen's where its page is scaled.
int pixels(PanelLook::Touch touch, const QWidget& widget);

} // namespace TouchSize

} // namespace norvo
