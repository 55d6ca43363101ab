// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace norvo {

/// The same moment by two clocks, in milliseconds.
struct ClockReading
{
    qint64 boot = 0; ///< Since the machine was started, its sleep included; nobody sets it.
    qint64 wall = 0; ///< Since the epoch, UTC; may be set.

    static ClockReading now();
    static qint64 bootNow(); ///< Alone, for what is done often.
};

/// The time of the history: never goes back, whatever is done to the wall clock.
///
/// It runs with the boot clock from the wall clock's time at the start on. A wall clock that is set
/// forward is followed at once. One that is set back is not: the history runs on ahead of it, until
/// it is set forward again or the next start. A start begins behind the newest row that there is.
class HistoryClock
{
public:
    static constexpr qint64 kReportedStep = 2000; ///< Milliseconds.

    HistoryClock(const ClockReading& now, qint64 newest);

    qint64 at(qint64 boot) const { return boot + m_offset; }
    /// By how much this time is later than the wall clock; 0 or more. It stays the same for as long
    /// as no clock is set, so that what is read by it at two times has the same times.
    qint64 ahead(const ClockReading& now);
    /// Compares with the wall clock, to be called often. By how much that was set since the last
    /// call; 0 for less than kReportedStep.
    qint64 follow(const ClockReading& now);

private:
    qint64 m_offset;
    qint64 m_wallOffset; ///< As last seen.
    qint64 m_ahead = 0;
};

} // namespace norvo
