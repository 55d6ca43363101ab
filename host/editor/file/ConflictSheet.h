// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

namespace norvo {

class EditedFile;

/// Asks what to do where others have changed the file that has unsaved changes here, and shows
/// both. Closed without an answer nothing is done.
///
/// The parts can be found by their object names: those of TwoTexts, "keepMine", "takeTheirs".
class ConflictSheet : public Sheet
{
    Q_OBJECT

public:
    /// `mine` is the text here.
    ConflictSheet(QWidget& opener, EditedFile& file, const QByteArray& mine);

signals:
    void problem(QString text);
};

} // namespace norvo
