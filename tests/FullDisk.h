// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <csignal>

#include <sys/resource.h>

/// As long as it lives, no file of this process can become larger than so many bytes, as on a disk
/// that is full: what goes beyond is cut off, and what is then written fails.
class FullDisk
{
public:
    explicit FullDisk(long long bytes)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit full{rlim_t(bytes), m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};
