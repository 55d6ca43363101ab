// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace norvo {

/// Keeps a second program away from something as long as this object, or its process, lives. An
/// empty file carries the lock; a process that is killed may leave the file but never the lock, as
/// QLockFile's may, where another process has got its number, or where its file is left empty.
class FileLock
{
public:
    enum class Result {
        Locked,
        Busy,       ///< Another one has it.
        Unavailable ///< The folder cannot be written, or its file system knows no locks.
    };

    explicit FileLock(const QString& fileName); ///< Locks nothing yet.
    ~FileLock();                                ///< Removes the file if it has the lock.
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    Result lock(); ///< At once; it never waits.

private:
    bool isCurrent(int descriptor) const;

    const QByteArray m_fileName;
    int m_descriptor = -1;
};

} // namespace norvo
