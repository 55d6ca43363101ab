// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/Diagnostics.h"
#include "host/panel/state/StateFile.h"

#include <QHash>

namespace norvo {

class Node;

/// What devices have stored in earlier runs, and where that was found.
struct SavedState
{
    QString file; ///< Named in warnings.
    PanelState values;
    StatePlaces places = {}; ///< May lack any.
};

/// Gives the saved values to the devices that were made anew; `nodes` by id. What belongs to no
/// device or parameter, or does not read, is left aside with a warning.
void applySavedState(const SavedState& saved, const QHash<QString, Node*>& nodes,
                     Diagnostics& diagnostics);

} // namespace norvo
