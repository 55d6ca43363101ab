// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/ReadContext.h"
#include "host/panel/file/services/AlarmSetting.h"

#include <QStringList>

#include <optional>

namespace norvo {

constexpr int kMaxAlarms = 5000; ///< That a panel names.

/// The keys of one alarm; the first is its signal, the next four are its limits.
const QStringList& alarmKeys();

/// Reads one entry of the list "alarms"; none where it is refused. In a use of a template the
/// device is one of the use's own, as in its connections.
std::optional<AlarmSetting> readAlarm(const YamlEntry& entry, const ReadContext& context);

} // namespace norvo
