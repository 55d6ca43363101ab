// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <ctime>
#include <unistd.h>

namespace norvo {

/// Processor time of the calling thread since the object was made: a bound on work that holds
/// whatever else the machine does.
class ProcessorTimer
{
public:
    qint64 elapsedMs() const { return now() - m_start; }

private:
    static qint64 now()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
    }

    qint64 m_start = now();
};

/// Time by the clock since the object was made or restarted, and what is left of it without the
/// time in which the machine did not let the calling thread run, or its disk kept somebody waiting:
/// a bound on waiting.
class OwnTimer
{
public:
    struct Elapsed
    {
        qint64 clockMs; ///< By the clock.
        qint64 ownMs;   ///< Without the time that others took, at least 0.
    };

    OwnTimer() { m_clock.start(); }

    Elapsed elapsed() const
    {
        const qint64 clock = m_clock.elapsed();
        return {clock, std::max(qint64(0), clock - (lostMs() - m_lostAtStart))};
    }

    Elapsed restart()
    {
        const Elapsed elapsed = this->elapsed();
        m_lostAtStart = lostMs();
        m_clock.restart();
        return elapsed;
    }

private:
    static QByteArray content(const char* path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Time in which somebody waited for the disk; 0 where the system does not count it.
    static qint64 stalledMs()
    {
        // "some", averages, and last "total=" with microseconds.
        const QByteArray some = content("/proc/pressure/io").split('\n').first();
        return some.mid(some.lastIndexOf('=') + 1).toLongLong() / 1000;
    }

    /// Waiting of this thread for a processor, what a virtual machine's host gave to others, and
    /// waiting for the disk.
    static qint64 lostMs()
    {
        const QList<QByteArray> waits = content("/proc/thread-self/schedstat").split(' ');
        const QList<QByteArray> ticks = content("/proc/stat").split('\n').first().split(' ');
        const qint64 waited = waits.size() > 1 ? waits[1].toLongLong() / 1000000 : 0;
        // "cpu", nothing, and eight counts of which the last is the stolen time.
        const qint64 stolen = ticks.size() > 9 ? ticks[9].toLongLong() : 0;
        return waited + stolen * 1000 / sysconf(_SC_CLK_TCK) + stalledMs();
    }

    QElapsedTimer m_clock;
    qint64 m_lostAtStart = lostMs();
};

} // namespace norvo
