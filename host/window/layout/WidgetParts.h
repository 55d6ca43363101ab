// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace norvo {

/// How a widget is laid out, told from what it is made of: never from its device.
struct WidgetParts
{
    bool wantsHeight = false;  ///< It shows more when it is higher.
    bool standsOnCard = false; ///< It is made of several parts, or painted: not one bare control.
    bool showsText = false;    ///< Of a value, which may get longer.
    int leastHeight = 0;       ///< In pixels, below which it cannot be read.

    static WidgetParts of(const QWidget& widget);
};

} // namespace norvo
