// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Harness.h"

#include <QString>

#include <vector>

namespace norvo {

struct NamedHarness
{
    QString name;
    Harness::Run run;
};

std::vector<NamedHarness>& harnesses(); ///< Of this program.

/// Drops what devices of broken panels say, and ends the program at a connection that fails.
void silenceMessages();
/// Runs it, and deletes what it has left for the event loop.
void runHarness(const NamedHarness& harness, const QByteArray& input);

} // namespace norvo
