// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRandomGenerator>

#include <algorithm>
#include <chrono>

namespace norvo {

/// How long to wait before something is tried again: twice as long from time to time, up to a
/// limit, and short again after a run that lasted.
class RetryDelay
{
public:
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds kMin{500};
    static constexpr Milliseconds kMax{30000};
    static constexpr Milliseconds kStableRun{10000};

    explicit RetryDelay(Milliseconds max = kMax) : m_max(max) {}

    /// `lastRun`: how long it had run when it ended; 0 where it has not begun.
    Milliseconds next(Milliseconds lastRun)
    {
        if (lastRun >= kStableRun) {
            m_next = kMin;
        }
        const Milliseconds delay = m_next;
        m_next = std::min(2 * m_next, m_max);
        return delay;
    }

    /// The same, up to a quarter more or less by chance: panels that lost one server together do
    /// not all return to it in one moment.
    Milliseconds nextJittered(Milliseconds lastRun)
    {
        const double factor = 0.75 + QRandomGenerator::global()->bounded(0.5);
        return Milliseconds(static_cast<Milliseconds::rep>(double(next(lastRun).count()) * factor));
    }

private:
    Milliseconds m_max;
    Milliseconds m_next = kMin;
};

} // namespace norvo
