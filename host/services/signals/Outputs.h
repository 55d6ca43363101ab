// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

class BaseDevice;

namespace norvo {

/// The outputs of a device, each name once: of one with several signatures that of a text, else
/// the first.
QStringList tellingOutputs(const BaseDevice& device);

} // namespace norvo
