// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QString>

class BaseWidget;
class QWidget;

namespace norvo {

/// The part of a device's widget that says what the device is: told by its Qt class, never by the
/// device's.
struct ShownPart
{
    enum class Kind {
        None,
        List,
        Slider,
        Spin,
        Line,
        CheckBox,
        Button,
        Progress,
        Log,
        Plot,
        Scene,
        Picture
    };

    static ShownPart of(const BaseWidget& widget);
    static Kind kindOf(const QWidget& part);

    QAccessible::Role role() const;

    QWidget* widget = nullptr; ///< Null: it has only labels, or paints itself.
    Kind kind = Kind::None;
};

/// What the widget shows now, with its unit; empty where that is no value.
QString shownValue(const BaseWidget& widget);

} // namespace norvo
