// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class BaseWidget;
class QEvent;
class QObject;

namespace norvo {

/// What comes from a hand, whatever it holds: told by the kind of the event alone.
namespace HandEvents {

bool isFromHand(const QEvent& event);
bool isTouch(const QEvent& event);
bool isDrag(const QEvent& event);

/// The device whose widget the object is, or belongs to: a part, a list that it has opened, a
/// shortcut. Null for what belongs to none.
BaseWidget* deviceOf(QObject* object);

/// The keys that only move the focus.
bool movesFocus(const QEvent& key);

} // namespace HandEvents

} // namespace norvo
