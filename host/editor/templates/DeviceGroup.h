// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/canvas/cells/CellMap.h"

#include <QByteArray>
#include <QCoreApplication>

namespace norvo {

class Catalogue;
class EditSession;
struct PanelDescription;

/// Devices that were copied, or that a template has, as they are put on the panel that is edited.
class DeviceGroup
{
    Q_DECLARE_TR_FUNCTIONS(norvo::DeviceGroup)

public:
    /// Their cells with the upper left one at `target`, under names that no device has; empty:
    /// none of them is seen on a page.
    static CellMap::Places placesAt(const PanelDescription& group, const Catalogue& catalogue,
                                    const Cells& target);

    /// Adds the devices and the connections among them that the text of a panel file has, with the
    /// upper left cell at `target`, or where it is free behind it, and selects them: one step,
    /// which the menu calls `what`. Returns why it cannot be done; empty: it is done.
    static QString put(EditSession& session, const QString& what, const QByteArray& text,
                       const Cells& target);
};

} // namespace norvo
