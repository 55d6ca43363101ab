// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <random>

namespace norvo {

/// What a random walk begins with: the same in every run, so that a change alone can break it.
/// NORVO_TEST_SEED is another number, or "random" to look for what no run has seen yet.
inline unsigned testSeed()
{
    const QByteArray given = qgetenv("NORVO_TEST_SEED");
    return given == "random" ? std::random_device()() : given.isEmpty() ? 1 : given.toUInt();
}

} // namespace norvo
