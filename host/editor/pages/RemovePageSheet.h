// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

#include <QStringList>

namespace norvo {

/// Asks whether a page is to be removed with its devices; accepted when it is.
class RemovePageSheet : public Sheet
{
    Q_OBJECT

public:
    RemovePageSheet(QWidget& opener, const QString& page, const QStringList& devices);
};

} // namespace norvo
