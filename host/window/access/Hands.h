// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>

class QEvent;

namespace norvo {

/// What a hand is on now: the widgets that have had a press and not yet its end. For devices'
/// widgets only.
class Hands
{
public:
    void see(QWidget& widget, const QEvent& event); ///< What the widget is about to get.

    bool isAnyOn() const { return m_pressed || m_touched || m_keyed; }
    /// Takes the hands off as if they had slid off: what they hold is let go and does not act.
    void takeOff();

private:
    void release();

    QPointer<QWidget> m_pressed; ///< By the mouse.
    QPoint m_position;
    QPointer<QWidget> m_touched;
    QPointer<QWidget> m_keyed;
};

} // namespace norvo
