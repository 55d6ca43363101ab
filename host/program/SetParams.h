// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/options/CommandLine.h"

class DeviceManager;

namespace norvo {

class TypeKnowledge;

/// Writes new values of parameters into a panel file, all of them or none, and nothing else in it
/// changes. What the check has against the new values is reported, and does not keep them out.
/// `stateFile` is that of the panel, or empty; a value in it that replaces a new one is reported.
/// Returns the exit status.
int setParams(const QString& file, const QString& stateFile, const QVector<ParamChange>& changes,
              const DeviceManager& manager, const TypeKnowledge& knowledge);

} // namespace norvo
