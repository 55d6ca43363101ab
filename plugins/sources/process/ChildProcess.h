// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/process/FileDescriptor.h"

#include <QByteArray>
#include <QProcess>
#include <QSocketNotifier>

#include <array>
#include <chrono>
#include <memory>

#include <sys/types.h>

namespace norvo {

/// A program that leads a process group of its own, and has of our open files the standard ones.
class GroupLeader : public QProcess
{
protected:
    void setupChildProcess() override; ///< Runs between fork and exec: only what is safe there.
};

/// A child program and all that it starts, from start to end. Never blocks but where it says so.
///
/// What it starts is known by its process group and by a mark in its environment. The kernel kills
/// the program when the thread that started it ends.
class ChildProcess : public GroupLeader
{
public:
    ChildProcess();
    ~ChildProcess() override; ///< Kills all of them.

    /// errorOccurred() or started() follows.
    void launch(const QString& path, const QStringList& arguments);

    FileDescriptor takeOutput() { return std::move(m_output); } ///< From started() on.
    FileDescriptor takeErrors() { return std::move(m_errors); }
    /// Sends all of the bytes to the standard input or none: false when the program has closed it
    /// or does not read and 1 MiB waits already.
    bool send(const QByteArray& bytes);
    void terminateAll(); ///< Asks the group to end, and closes the standard input.
    void killAll();      ///< Emits nothing. Waits for the program itself, 200 ms at most.
    /// Waits for the end of all of them; true when none is left.
    bool waitForEndOfAll(std::chrono::milliseconds limit);

protected:
    void setupChildProcess() override;

private:
    void sendWaiting();
    void closeInput();

    QByteArray m_mark;
    FileDescriptor m_input;
    FileDescriptor m_output;
    FileDescriptor m_errors;
    std::array<int, 3> m_programEnds{}; ///< Its standard input, output and errors to be.
    std::unique_ptr<QSocketNotifier> m_inputNotifier;
    QByteArray m_waiting; ///< For the standard input.
    pid_t m_parent;
    pid_t m_group = 0;   ///< 0: none is left.
    GroupLeader m_guard; ///< Kills all when this process is gone, however it ended.
};

} // namespace norvo
