// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/sources/process/FileDescriptor.h"
#include "plugins/sources/process/Launch.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <memory>

namespace norvo {

/// A child program and all that it starts, from start to end. Never blocks but where it says so.
class ChildProcess : public QObject
{
    Q_OBJECT

public:
    ChildProcess() = default;
    ~ChildProcess() override; ///< Kills all of them.

    /// failed() or started() follows, from the event loop.
    void start(const QString& path, const QStringList& arguments);

    FileDescriptor takeOutput() { return std::move(m_output); } ///< From started() on.
    FileDescriptor takeErrors() { return std::move(m_errors); }
    /// Sends all of the bytes to the standard input or none: false when the program has closed it
    /// or does not read and 1 MiB waits already.
    bool write(const QByteArray& bytes);
    void terminate(); ///< Asks the group to end, and closes the standard input.
    void kill();      ///< Ends all of them; waits for the program itself, 200 ms at most.
    /// Waits for the end of all of them; true when none is left.
    bool waitForEnd(std::chrono::milliseconds limit);

signals:
    void started();
    void failed(const QString& reason); ///< The program could not be run.
    /// The program has ended, and with it what it left behind. An exit status, or 128 and the
    /// number of the signal that killed it.
    void exited(int code);

private:
    void readStatus();
    void watchExit();
    void checkExit();
    bool reap(); ///< True when the program has ended, now or before.
    void killMarked();
    void sendWaiting();

    pid_t m_pid = -1;      ///< Below 0: never started.
    QByteArray m_mark;     ///< Of the program and all that it starts.
    bool m_reaped = false; ///< The program; others may remain.
    bool m_allEnded = false;
    int m_code = 0;
    FileDescriptor m_input;
    FileDescriptor m_output;
    FileDescriptor m_errors;
    FileDescriptor m_status;
    FileDescriptor m_exit; ///< Becomes readable when the first process ends.
    std::unique_ptr<GroupGuard> m_guard;
    std::unique_ptr<QSocketNotifier> m_inputNotifier;
    std::unique_ptr<QSocketNotifier> m_statusNotifier;
    std::unique_ptr<QSocketNotifier> m_exitNotifier;
    QTimer m_exitPoll;    ///< Where the kernel has no descriptor for a process.
    QByteArray m_waiting; ///< For the standard input.
};

} // namespace norvo
