// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

namespace norvo {

/// Asks what becomes of changes that are not saved when the editing ends. Closed, the editing goes
/// on.
///
/// The keys can be found by their object names: "save", "discard".
class SaveSheet : public Sheet
{
    Q_OBJECT

public:
    SaveSheet(QWidget& opener, const QString& file);

signals:
    void saveChosen();
    void discardChosen();
};

} // namespace norvo
