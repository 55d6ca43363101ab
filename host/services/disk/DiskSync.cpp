// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/disk/DiskSync.h"

#include <utility>

#include <csignal>
#include <unistd.h>

namespace norvo {

DiskSync::DiskSync()
{
    // Signals are the main thread's.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread(&DiskSync::run, this);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

DiskSync::~DiskSync()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void DiskSync::request(int fd)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_fd >= 0) {
            return; // What was written meanwhile goes along.
        }
        m_fd = ::dup(fd);
    }
    m_wake.notify_one();
}

void DiskSync::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (true) {
        m_wake.wait(lock, [this] { return m_fd >= 0 || m_isEnding; });
        if (m_fd < 0) {
            return;
        }
        m_wake.wait_for(lock, kDelay, [this] { return m_isEnding; });
        const int fd = std::exchange(m_fd, -1);
        lock.unlock();
        ::fdatasync(fd);
        ::close(fd);
        lock.lock();
    }
}

} // namespace norvo
