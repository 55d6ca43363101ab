// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/cells/CellMap.h"

#include <QRect>
#include <QSet>

#include <optional>

namespace norvo {

/// Where something would land.
struct Ghost
{
    CellMap::Places cells; ///< What is new has an empty id.
    QString refusal;       ///< Why it may not land there; empty: it may.
};

/// What the covers of the pages show.
struct CanvasView
{
    CellMap map;
    QStringList selection;
    QSet<QString> fixed; ///< Devices that cannot be edited here.
    int target = 0;      ///< The least size of what is touched, in pixels.
    std::optional<Ghost> ghost;
    Cells cursor;     ///< A cell; row -1: none.
    QString bandArea; ///< Of the rubber band, in pixels of its page.
    QRect band;

    /// The only device that is selected; empty: none, or several.
    QString only() const { return selection.size() == 1 ? selection.first() : QString(); }
};

} // namespace norvo
