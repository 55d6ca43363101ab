// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QString>
#include <Qt>

#include <functional>

class QWidget;

/// Modal keyboard for fingers, in more than one language; a physical keyboard serves as well.
///
/// The parts can be found by their object names: "display" (a QLineEdit), "reason" (why OK waits);
/// the keys "key0" to "key9", "keyBackspace", "keyShift" (for one letter), "keyCaps" (until pressed
/// again), "keySymbols", "keyLanguage", "keyLeft", "keyRight", "keySpace", "ok", "cancel", and the
/// letters by row and column, "key1-0" to "key3-8".
class NORVOGUI_EXPORT ScreenKeyboardDialog
{
public:
    ScreenKeyboardDialog() = delete;

    /// The text on the display once confirmed, with `ok` (may be null) set to true; otherwise
    /// `text` and false. `hint` stands in the display while it is empty. `check` judges each text
    /// and enables OK, none accepts any; `reason` says why a text is refused (empty: in general
    /// words).
    static QString getText(QWidget* parent, QString title, QString text = {},
                           Qt::WindowFlags flags = {}, bool* ok = nullptr, QString hint = {},
                           QString reason = {}, std::function<bool(QString)> check = {});
};
