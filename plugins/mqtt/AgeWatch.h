// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <chrono>
#include <vector>

namespace norvo {

/// Which of some things have not been heard of for too long.
class AgeWatch
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Watches one more; they count from 0. `max` of 0: it never is too old.
    void add(std::chrono::milliseconds max) { m_things.push_back({max, {}, false}); }
    void clear() { m_things.clear(); }

    bool isNeeded() const;              ///< Whether any of them can become too old.
    bool isAnyOld() const;              ///< Whether any of them is.
    void restart(Time now);             ///< All that are not too old are as new.
    bool hear(int thing, Time now);     ///< True: it was too old.
    std::vector<int> findOld(Time now); ///< Those that have become too old since the last call.

private:
    struct Thing
    {
        std::chrono::milliseconds max;
        Time heard;
        bool isOld;
    };

    std::vector<Thing> m_things;
};

} // namespace norvo
