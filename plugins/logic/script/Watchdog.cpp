// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/script/Watchdog.h"

#include <chrono>
#include <pthread.h>

namespace {

constexpr quint64 kAtWork = 1;
constexpr quint64 kInterrupted = 2;
constexpr quint64 kNextCall = 4;

constexpr std::chrono::milliseconds kTick{10};
constexpr int kTicksUntilSleep = 100; ///< Without any call.

} // namespace

norvo::Watchdog::Watchdog(QJSEngine& engine, int limitMs) : m_engine(engine), m_limitMs(limitMs)
{
    pthread_getcpuclockid(pthread_self(), &m_clock);
    m_thread = std::thread([this] { watch(); });
}

norvo::Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void norvo::Watchdog::begin()
{
    m_call.store((m_call.load() & ~(kAtWork | kInterrupted)) + kNextCall + kAtWork);
    if (m_isAsleep.load()) {
        {
            const std::lock_guard lock(m_mutex);
            m_isAsleep = false;
        }
        m_wake.notify_one();
    }
}

bool norvo::Watchdog::end()
{
    const quint64 call = m_call.fetch_and(~kAtWork);
    if ((call & kInterrupted) == 0) {
        return false;
    }
    const std::lock_guard lock(m_mutex); // It may be about to interrupt.
    m_engine.setInterrupted(false);
    return true;
}

void norvo::Watchdog::watch()
{
    std::unique_lock lock(m_mutex);
    quint64 seen = 0;
    qint64 seenAtMs = 0;
    int idleTicks = 0;
    while (!m_isEnding) {
        m_wake.wait_for(lock, kTick);
        quint64 call = m_call.load();
        if (call != seen) {
            seen = call;
            seenAtMs = processorTimeMs();
            idleTicks = 0;
        } else if ((call & kAtWork) == 0) {
            if (++idleTicks > kTicksUntilSleep) {
                sleepUntilNeeded(lock, call);
            }
        } else if ((call & kInterrupted) == 0 && processorTimeMs() - seenAtMs >= m_limitMs &&
                   m_call.compare_exchange_strong(call, call | kInterrupted)) {
            m_engine.setInterrupted(true);
        }
    }
}

void norvo::Watchdog::sleepUntilNeeded(std::unique_lock<std::mutex>& lock, quint64 idleCall)
{
    m_isAsleep = true;
    if (m_call.load() == idleCall) {
        m_wake.wait(lock, [this] { return !m_isAsleep.load() || m_isEnding; });
    }
    m_isAsleep = false;
}

qint64 norvo::Watchdog::processorTimeMs() const
{
    timespec time{};
    clock_gettime(m_clock, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}
