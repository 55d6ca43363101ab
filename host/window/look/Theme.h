// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/look/PanelLook.h"

#include <QColor>
#include <QPalette>

namespace norvo {

/// The colours of a panel: calm surroundings, so that what is abnormal stands out.
///
/// Each text reads at 4.5 : 1 at least on each ground that it is drawn on; see contrast().
struct Theme
{
    QColor page;
    QColor card;  ///< Behind a device of several parts.
    QColor field; ///< What is written into or chosen from.
    QColor text;
    QColor quiet; ///< Text of what is disabled, and hints.
    QColor button;
    QColor edge;   ///< Around controls.
    QColor accent; ///< What is on, chosen or filled.
    QColor textOnAccent;
    QColor selection; ///< Of text and of curves without a colour of their own; reads on plots, too.
    QColor textOnSelection;
    QColor plot; ///< Light in both themes: limit lines are dark red, and curves can be blue.
    QColor textOnPlot;

    /// System is as dark as the windows of the platform were when it was first asked for.
    static const Theme& of(PanelLook::Theme theme);

    /// Red that reads on the page, on cards and on fields of that palette: for what is refused.
    static QColor faultOn(const QPalette& palette);

    QPalette palette() const;
    QPalette plotPalette() const;
};

} // namespace norvo
