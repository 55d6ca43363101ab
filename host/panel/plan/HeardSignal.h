// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AlarmSetting.h"
#include "host/panel/file/services/HistorySetting.h"

#include <optional>

class BaseDevice;

namespace norvo {

class Diagnostics;

/// An alarm that the panel names, and what it listens to.
struct PlannedAlarm
{
    AlarmSetting setting;
    QString signature; ///< Of the device's signal, whose first argument the limit can be held to.
};

/// Finds the signal of an alarm. Of overloads without a written signature that is taken which
/// carries what the limit compares: a number, yes or no, or a text. Otherwise the error says what
/// would be right.
std::optional<PlannedAlarm> resolveAlarm(const AlarmSetting& alarm, const BaseDevice& device,
                                         Diagnostics& diagnostics);

/// A signal that is recorded.
struct PlannedHistory
{
    HistorySignal setting;
    QString signature; ///< Whose first argument is a number, yes or no, or a text.
};

/// Of overloads without a written signature that of a number is taken, then that of yes or no, then
/// that of a text.
std::optional<PlannedHistory> resolveHistory(const HistorySignal& recorded,
                                             const BaseDevice& device, Diagnostics& diagnostics);

} // namespace norvo
