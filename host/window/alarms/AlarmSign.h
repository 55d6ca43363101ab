// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/Alarm.h"

#include <QIcon>
#include <QRectF>

class QPainter;
class QPalette;

namespace norvo {

/// The sign of a priority, told by its shape as well as by its colour: a triangle for high, a
/// diamond for medium, a circle for low. Filled while nobody has acknowledged, else an outline.
namespace AlarmSign {

void paint(QPainter& painter, const QRectF& area, AlarmPriority priority, bool isFilled,
           const QPalette& palette);
QIcon icon(AlarmPriority priority, bool isFilled, int size, const QPalette& palette);
QString nameOf(AlarmPriority priority); ///< For the operator: "High".
QString nameOf(const Alarm& alarm);     ///< Its state in words: "acknowledged".

} // namespace AlarmSign

} // namespace norvo
