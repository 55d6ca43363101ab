// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QVector>

namespace norvo {

class Catalogue;
struct TypeWords;

/// What is run where nobody sees it, to be pictured: devices with a widget, and the inputs that
/// made-up values go to. Nothing of it is given a file or a command, or comes from another device
/// without a widget.
struct PicturedPanel
{
    struct Feed
    {
        QString device; ///< The id.
        QString input;  ///< A name or a signature.
    };

    static PicturedPanel ofType(const TypeWords& words); ///< Its example, alone.
    static PicturedPanel ofGroup(const PanelDescription& group, const Catalogue& catalogue);

    PanelDescription description;
    QVector<Feed> feeds;
};

} // namespace norvo
