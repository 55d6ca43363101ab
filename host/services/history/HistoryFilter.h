// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/history/HistoryValue.h"

#include <functional>
#include <optional>

namespace norvo {

/// Lets those values of one signal through that are to be kept. Times are of one clock that never
/// goes back, in milliseconds.
class HistoryFilter
{
public:
    using Keep = std::function<void(const HistoryPoint& point)>;

    /// `deadband`: by more than so much must a number differ from the one kept last, and a text or
    /// yes or no at all; none: all are kept. `every`: how much later than the one kept last.
    HistoryFilter(std::optional<double> deadband, qint64 every, Keep keep);

    /// Before a change that ends a time without one, the last value of that time is kept, too, so
    /// that a line through the points stays where the values were.
    void take(const HistoryPoint& point);
    void advance(qint64 now); ///< Keeps what waits for the interval to pass, once it has.
    void end();               ///< Keeps the last value.

private:
    bool isChange(const HistoryValue& value) const;
    void keep(const HistoryPoint& point);

    const std::optional<double> m_deadband;
    const qint64 m_every;
    const Keep m_keep;
    std::optional<HistoryPoint> m_kept;
    std::optional<HistoryPoint> m_held; ///< Newer than the one kept last.
    bool m_isHeldChange = false;        ///< It waits for the interval only.
};

} // namespace norvo
