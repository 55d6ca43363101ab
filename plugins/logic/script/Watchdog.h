// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QJSEngine>

#include <atomic>
#include <condition_variable>
#include <ctime>
#include <mutex>
#include <thread>

namespace norvo {

/// Interrupts an engine that is at one call for too long.
///
/// A call costs two writes to a number, at which a thread of its own looks from time to time.
/// Processor time of the engine's thread counts, so that a machine that stands still interrupts
/// nothing. What takes long inside one of JavaScript's own functions is interrupted after it.
class Watchdog
{
public:
    Watchdog(QJSEngine& engine, int limitMs); ///< Of the thread that makes it.
    ~Watchdog();

    void begin();
    bool end(); ///< Whether the call was interrupted.

private:
    void watch();
    void sleepUntilNeeded(std::unique_lock<std::mutex>& lock, quint64 idleCall);
    qint64 processorTimeMs() const;

    QJSEngine& m_engine;
    const int m_limitMs;
    clockid_t m_clock{};
    std::atomic<quint64> m_call{0}; ///< Its number, shifted, and the two bits of its state.
    std::atomic<bool> m_isAsleep{false};
    bool m_isEnding = false; ///< With m_mutex.
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::thread m_thread;
};

} // namespace norvo
