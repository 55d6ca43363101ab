// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QString>
#include <Qt>

#include <limits>

class QWidget;

/// Modal numeric keypad for fingers in gloves, a physical keyboard serves as well.
///
/// The first digit replaces the start value, backspace edits it; "," counts as ".". OK waits until
/// the number is one and lies in the range, ends included; Enter confirms, Escape cancels. Ends the
/// wrong way round are swapped, one that is NaN does not bound. The sign of the step is ignored; a
/// step below one unit of the last decimal counts as that unit.
///
/// The parts can be found by their object names: "display", "range", "oldValue", "reason" (why OK
/// waits), "label"; the keys "key0" to "key9", "keyPoint" (not for whole numbers), "keySign",
/// "keyBackspace", "keyClear", "keyUp", "keyDown", "ok", "cancel".
class NORVOGUI_EXPORT NumpadDialog
{
public:
    NumpadDialog() = delete;

    /// The number on the display once confirmed, with `ok` (may be null) set to true; otherwise
    /// `value` and false. `decimals`, at most 15, limits what can be typed and rounds the start.
    static double getDouble(QWidget* parent, const QString& title, const QString& label,
                            double value = 0, double min = std::numeric_limits<double>::lowest(),
                            double max = std::numeric_limits<double>::max(), int decimals = 2,
                            bool* ok = nullptr, Qt::WindowFlags flags = {}, double step = 1);

    /// The same for whole numbers; `value` is cut toward zero, its nearest end where it is no int
    /// and 0 where it is no number.
    static int getInt(QWidget* parent, const QString& title, const QString& label, double value = 0,
                      int min = std::numeric_limits<int>::lowest(),
                      int max = std::numeric_limits<int>::max(), int step = 1, bool* ok = nullptr,
                      Qt::WindowFlags flags = {});
};
