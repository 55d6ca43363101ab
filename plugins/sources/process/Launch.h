#pragma once

#include "plugins/sources/process/FileDescriptor.h"

#include <QString>
#include <QStringList>

#include <sys/types.h>

namespace norvo {

/// A program that has just been started, and our ends of the pipes to it.
struct Launched
{
    pid_t pid = -1; ///< Below 0: not started, see `fault`. It leads a process group.
    QString fault;
    FileDescriptor input; ///< Does not block.
    FileDescriptor output;
    FileDescriptor errors;
    FileDescriptor status; ///< Ends when the program runs; else brings an errno as an int first.
};

/// Starts the program at `path` in a process group of its own. The kernel kills it when the thread
/// that called this ends.
Launched launch(const QString& path, const QStringList& arguments);

/// A small process that waits until this one is gone, however it ended, and then kills the process
/// group `group`: the kernel's parent-death signal reaches the first process of it only.
class GroupGuard
{
public:
    GroupGuard() = default;
    explicit GroupGuard(pid_t group);
    GroupGuard(const GroupGuard&) = delete;
    GroupGuard& operator=(const GroupGuard&) = delete;
    ~GroupGuard();

private:
    pid_t m_pid = -1;
    FileDescriptor m_lifeline;
};

} // namespace norvo
