// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/UnixSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>

namespace norvo {

namespace {

constexpr unsigned kGraceSeconds = 2; ///< For the stop after a doubled signal.

int s_pipe[2] = {-1, -1};
// The handlers of two signals may run at the same time, in two threads.
std::atomic<int> s_last = 0;        ///< The latest of SIGINT and SIGTERM.
std::atomic<qint64> s_firstMs = -1; ///< When the first of them came.
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<qint64>::is_always_lock_free);

qint64 nowMs()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

void endProcess(int)
{
    _exit(128 + s_last);
}

/// Calls only what a signal handler may call. A pipe that is full holds enough to wake the program.
void noteSignal(int number)
{
    const int saved = errno;
    if (number != SIGHUP) {
        s_last = number;
        qint64 first = -1;
        const qint64 now = nowMs();
        const bool isFirst = s_firstMs.compare_exchange_strong(first, now);
        if (!isFirst && now - first > UnixSignals::kDoubledMs) {
            endProcess(number);
        }
        if (!isFirst) {
            alarm(kGraceSeconds);
        }
    }
    const char byte = 0;
    const ssize_t ignored = ::write(s_pipe[1], &byte, 1);
    static_cast<void>(ignored);
    errno = saved;
}

void setHandler(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigfillset(&action.sa_mask); // One handler at a time.
    sigaction(number, &action, nullptr);
}

void setHandlers(void (*handler)(int))
{
    setHandler(SIGINT, handler);
    setHandler(SIGTERM, handler);
    struct sigaction before = {};
    sigaction(SIGHUP, nullptr, &before);
    if (before.sa_handler != SIG_IGN) { // nohup(1) wants the panel to outlive its terminal.
        setHandler(SIGHUP, handler);
    }
}

} // namespace

UnixSignals::UnixSignals(QObject* parent) : QObject(parent)
{
    Q_ASSERT(s_pipe[0] < 0);
    if (pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // Out of file descriptors: the signals go on ending the process.
    }
    m_notifier = std::make_unique<QSocketNotifier>(s_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &UnixSignals::drain);
    setHandler(SIGALRM, endProcess);
    setHandlers(noteSignal);
}

UnixSignals::~UnixSignals()
{
    if (!m_notifier) {
        return;
    }
    setHandlers(SIG_DFL);
    m_notifier.reset();
    for (int& end : s_pipe) {
        ::close(end);
        end = -1;
    }
}

void UnixSignals::drain()
{
    char bytes[64];
    while (::read(s_pipe[0], bytes, sizeof bytes) > 0) {
    }
    m_isStopRequested = true;
    emit stopRequested();
}

} // namespace norvo
