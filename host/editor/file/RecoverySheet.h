// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

namespace norvo {

/// Shows what an earlier editing has left unsaved, beside the file's text, and asks what becomes of
/// it. Closed without an answer, it stays.
///
/// The parts can be found by their object names: those of TwoTexts, "takeOver", "drop".
class RecoverySheet : public Sheet
{
    Q_OBJECT

public:
    RecoverySheet(QWidget& opener, const QByteArray& left, const QByteArray& inFile);

signals:
    void takeOverChosen();
    void dropChosen();
};

} // namespace norvo
