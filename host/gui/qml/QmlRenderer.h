// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

class QByteArray;

namespace norvo {

/// Switches Qt Quick to its software renderer where there is no OpenGL, or only one that is
/// computed: that costs six times as much, and without any Qt Quick inside a widget ends the
/// process. So it does where windows are told to take none. Somebody's choice before stands. Must
/// come before the first Qt Quick window; looks only once.
void chooseQuickRenderer();

/// Whether an OpenGL that calls itself so is computed by the processor.
bool isSoftwareOpenGl(const QByteArray& renderer);

} // namespace norvo
