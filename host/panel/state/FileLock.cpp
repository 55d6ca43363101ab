// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/state/FileLock.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace norvo {

FileLock::FileLock(const QString& fileName) : m_fileName(QFile::encodeName(fileName)) {}

FileLock::~FileLock()
{
    if (m_descriptor >= 0) {
        if (isCurrent(m_descriptor)) {
            unlink(m_fileName);
        }
        close(m_descriptor);
    }
}

FileLock::Result FileLock::lock()
{
    constexpr int kMaxAttempts = 10;
    for (int attempt = 0; m_descriptor < 0 && attempt < kMaxAttempts; ++attempt) {
        const int descriptor =
            open(m_fileName, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, mode_t(0666));
        if (descriptor < 0) {
            return Result::Unavailable;
        }
        if (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
            const bool isBusy = errno == EWOULDBLOCK;
            close(descriptor);
            return isBusy ? Result::Busy : Result::Unavailable;
        }
        if (isCurrent(descriptor)) {
            m_descriptor = descriptor;
        } else { // Removed by its last owner after it was opened here.
            close(descriptor);
        }
    }
    return m_descriptor < 0 ? Result::Unavailable : Result::Locked;
}

/// Whether the name still stands for this file, and the file is one of ours: empty.
bool FileLock::isCurrent(int descriptor) const
{
    struct stat opened = {};
    struct stat named = {};
    return fstat(descriptor, &opened) == 0 && lstat(m_fileName, &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev &&
           S_ISREG(opened.st_mode) && opened.st_size == 0;
}

} // namespace norvo
