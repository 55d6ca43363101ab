// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAccessibleInterface;
class QWidget;

namespace norvo {

/// What screen readers and test tools are given of a panel: each device by its name, kind and
/// value, and its inner controls by the same name.
namespace Accessibility {

/// Makes what stands for a control in place of what Qt would make; null: that does.
using MakeControl = QAccessibleInterface* (*)(QWidget& control);

void install(MakeControl makeControl); ///< Once, by the program, before all widgets.

/// Remembers from now on what a lamp or a gauge shows, as it only paints it; nothing before
/// install().
void follow(QWidget& placed);

} // namespace Accessibility

} // namespace norvo
