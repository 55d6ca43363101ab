// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/CommandLine.h"

class DeviceManager;

namespace norvo {

class TypeKnowledge;

/// Writes new values of parameters into a panel file, all of them or none, and nothing else in it
/// changes. What the check has against the new values is reported, and does not keep them out.
/// Returns the exit status.
int setParams(const QString& file, const QVector<ParamChange>& changes,
              const DeviceManager& manager, const TypeKnowledge& knowledge);

} // namespace norvo
