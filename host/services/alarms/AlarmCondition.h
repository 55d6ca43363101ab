// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AlarmSetting.h"

#include <QVariant>

#include <optional>

namespace norvo {

/// Whether `value` is beyond the limit; `isBeyond` is what was said of the value before. None for a
/// value that says nothing: NaN, and what is not of the limit's kind. Then all stays as it is.
///
/// Above 80 with a dead band of 2: beyond from the first value greater than 80 on, and until one of
/// 78 or less. Below likewise.
std::optional<bool> isBeyondLimit(const AlarmLimit& limit, const QVariant& value, bool isBeyond);

} // namespace norvo
