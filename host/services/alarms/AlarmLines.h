// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/AlarmModel.h"

#include <QVector>

namespace norvo {

/// A line that an operator sees: one alarm, or a flood of them.
struct AlarmLine
{
    QVector<int> alarms; ///< Of a flood all, that which began first at its head.

    bool isFlood() const { return alarms.size() > 1; }
};

/// So many alarms that began one right after the other are one line.
constexpr int kFloodSize = 20;

/// Whether `a` is to be seen before `b`: what nobody has acknowledged, then by priority, then what
/// is still there, then what began last.
bool isWorse(const Alarm& a, const Alarm& b);

/// The alarms that are shown, the worst first; a flood stands where the worst of it would.
QVector<AlarmLine> alarmLines(const AlarmModel& model);

/// What stands in a line: the text of its alarm, or how many there are and which began first.
QString textOf(const AlarmLine& line, const AlarmModel& model);

} // namespace norvo
