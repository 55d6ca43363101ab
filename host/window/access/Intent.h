// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QString>

#include <functional>
#include <optional>

class QAbstractButton;
class QWheelEvent;
class QWidget;

namespace norvo {

/// What a hand is about to do to a control: the value that it would get, and how to do it.
struct Intent
{
    QString value; ///< As the control would show it; empty: it sends none.
    std::function<void()> perform;
};

/// Finds out what events would do to a control. The control is as before, has sent nothing, and
/// nobody has seen a change.
namespace Intents {

/// What the hand is really on: the button, slider, list or field of which `part` is a part; `part`
/// itself where the device is made of something else.
QWidget* controlOf(QWidget& part);

/// Whether a press there is one on the button: a check box takes none beside its text.
bool isHit(QAbstractButton& button, const QPoint& position);
Intent click(QAbstractButton& button);
/// None where the mouse, from the press to the release, would change nothing.
std::optional<Intent> drag(QWidget& control, const QPoint& from, const QPoint& to);
std::optional<Intent> key(QWidget& control, const QKeyEvent& event);
std::optional<Intent> wheel(QWidget& control, const QWheelEvent& event);
/// Of the list of a drop-down list: `row` is chosen.
std::optional<Intent> choice(QWidget& list, int row);
/// Asks in the number or text dialog what the field is to hold; none where that was cancelled.
std::optional<Intent> entry(QWidget& field);
/// Does the same again to what cannot be tried.
Intent tapAgain(QWidget& widget, const QPoint& position);
Intent keyAgain(QWidget& widget, const QKeyEvent& event);

} // namespace Intents

} // namespace norvo
