// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>

namespace norvo {

/// How long to wait before a program is started again: twice as long from time to time, up to a
/// limit, and short again after a run that lasted.
class RestartDelay
{
public:
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds kMin{500};
    static constexpr Milliseconds kMax{30000};
    static constexpr Milliseconds kStableRun{10000};

    Milliseconds next(Milliseconds lastRun)
    {
        if (lastRun >= kStableRun) {
            m_next = kMin;
        }
        const Milliseconds delay = m_next;
        m_next = std::min(2 * m_next, kMax);
        return delay;
    }

private:
    Milliseconds m_next = kMin;
};

} // namespace norvo
