// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QString>

#include <optional>

class QWidget;

namespace norvo {

/// Modal keypad for a PIN: its digits are masked, and no old value and no range are shown.
///
/// OK waits for the first digit; Enter confirms, Escape cancels. The parts can be found by their
/// object names: "label", "display"; the keys "key0" to "key9", "keyBackspace", "keyClear", "ok",
/// "cancel".
class NORVOGUI_EXPORT PinDialog
{
public:
    PinDialog() = delete;

    /// The digits entered, at most 32; nothing if it was cancelled or its parent took it along.
    /// `label` says what the PIN is for, and is the window's title.
    static std::optional<QString> getPin(QWidget* parent, const QString& label);
};

} // namespace norvo
