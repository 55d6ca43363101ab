// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace norvo {

/// Brings what was written to a file onto the disk soon, in a thread of its own: a slow disk makes
/// nobody wait.
class DiskSync
{
public:
    static constexpr std::chrono::milliseconds kDelay{300}; ///< From a request to the disk.

    DiskSync();
    ~DiskSync(); ///< Waits for what was asked for.
    DiskSync(const DiskSync&) = delete;
    DiskSync& operator=(const DiskSync&) = delete;

    void request(int fd); ///< An open file, which may be closed at once.

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    int m_fd = -1; ///< A duplicate; -1: nothing is asked for.
    bool m_isEnding = false;
    std::thread m_thread; ///< Last: it uses the others.
};

} // namespace norvo
