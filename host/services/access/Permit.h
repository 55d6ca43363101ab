// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/services/AccessSetting.h"

#include <functional>

namespace norvo {

/// Does what somebody at the panel has asked for: at once where he may, after a PIN of that role
/// where he may not yet, and never without it.
using Permit = std::function<void(Role needed, std::function<void()> action)>;

} // namespace norvo
