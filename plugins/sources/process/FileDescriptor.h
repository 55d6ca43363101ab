// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <utility>

namespace norvo {

/// Owns an open file descriptor.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd = -1) : m_fd(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~FileDescriptor() { close(); }

    bool isOpen() const { return m_fd >= 0; }
    int get() const { return m_fd; }

    void close()
    {
        if (isOpen()) {
            ::close(std::exchange(m_fd, -1));
        }
    }

private:
    int m_fd;
};

} // namespace norvo
