// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

/// Turns the mouse wheel over the middle of `widget`, away from the hand for positive notches.
inline void turnWheel(QWidget& widget, int notches)
{
    constexpr int eighthsOfADegree = 120;
    const QPoint middle = widget.rect().center();
    QWheelEvent wheel(middle, widget.mapToGlobal(middle), {}, {0, notches * eighthsOfADegree},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
}
