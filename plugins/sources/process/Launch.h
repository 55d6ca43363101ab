// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/process/FileDescriptor.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <sys/types.h>

namespace norvo {

/// A program that has just been started, and our ends of the pipes to it.
struct Launched
{
    pid_t pid = -1; ///< Below 0: not started, see `error`. It leads a process group.
    QString error;
    FileDescriptor input; ///< Does not block.
    FileDescriptor output;
    FileDescriptor errors;
    FileDescriptor status; ///< Ends when the program runs; else brings an errno as an int first.
};

/// Starts the program at `path` in a process group of its own, with the variable `mark` in its
/// environment. The kernel kills it when the thread that called this ends. From the first call on
/// this whole process ignores SIGPIPE: writing to a program that has gone must be an error of that
/// write, not the end of the panel.
Launched launch(const QString& path, const QStringList& arguments, const QByteArray& mark);

/// A small process (a shell) that waits until this one is gone, however it ended, and then kills
/// the process group `group` and all that has the mark. Nobody else would after a SIGKILL: the
/// kernel's parent-death signal reaches the first process of the group only.
class GroupGuard
{
public:
    GroupGuard(pid_t group, const QByteArray& mark);
    GroupGuard(const GroupGuard&) = delete;
    GroupGuard& operator=(const GroupGuard&) = delete;
    ~GroupGuard();

private:
    pid_t m_pid = -1;
    FileDescriptor m_lifeline;
};

} // namespace norvo
