// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/history/HistoryClock.h"

#include <QDateTime>

#include <algorithm>
#include <cstdlib>
#include <ctime>

namespace norvo {

qint64 ClockReading::bootNow()
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

ClockReading ClockReading::now()
{
    return {bootNow(), QDateTime::currentMSecsSinceEpoch()};
}

HistoryClock::HistoryClock(const ClockReading& now, qint64 newest)
    : m_offset(std::max(now.wall, newest + 1) - now.boot), m_wallOffset(now.wall - now.boot)
{}

qint64 HistoryClock::ahead(const ClockReading& now)
{
    constexpr qint64 ticks = 2; // Whole milliseconds of two clocks begin at different moments.
    const qint64 ahead = std::max<qint64>(0, at(now.boot) - now.wall);
    if (std::abs(ahead - m_ahead) > ticks) {
        m_ahead = ahead;
    }
    return m_ahead;
}

qint64 HistoryClock::follow(const ClockReading& now)
{
    const qint64 wallOffset = now.wall - now.boot;
    const qint64 step = wallOffset - m_wallOffset;
    m_wallOffset = wallOffset;
    m_offset = std::max(m_offset, wallOffset);
    return std::abs(step) < kReportedStep ? 0 : step;
}

} // namespace norvo
