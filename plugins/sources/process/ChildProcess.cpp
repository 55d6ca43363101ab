// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QSignalBlocker>
#include <QUuid>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace norvo {

namespace {

constexpr int kMaxWaiting = 1024 * 1024;
constexpr int kKillWaitMs = 200;
constexpr int kMaxPasses = 3;
constexpr qint64 kMaxEnvironment = qint64(4) * 1024 * 1024;

/// A process that only waits to be reaped has no environment any more.
bool isMarked(const QString& pid, const QByteArray& mark)
{
    QFile file("/proc/" + pid + "/environ");
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) &&
           ('\0' + file.read(kMaxEnvironment)).contains('\0' + mark + '=');
}

/// The processes that have the mark and have not ended: also those that have left the group
/// (`setsid`). One that has cleared its environment as well is not found.
std::vector<pid_t> markedProcesses(const QByteArray& mark)
{
    std::vector<pid_t> found;
    const QStringList entries = QDir("/proc").entryList(QDir::Dirs, QDir::NoSort);
    for (const QString& entry : entries) {
        if (const pid_t pid = entry.toInt(); pid > 0 && isMarked(entry, mark)) {
            found.push_back(pid);
        }
    }
    return found;
}

struct Pipe
{
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

/// Both ends are closed where there are no descriptors left.
Pipe openPipe()
{
    std::array<int, 2> ends{-1, -1};
    const bool isOpen = ::pipe2(ends.data(), O_CLOEXEC) == 0;
    return {FileDescriptor(isOpen ? ends[0] : -1), FileDescriptor(isOpen ? ends[1] : -1)};
}

} // namespace

void GroupLeader::setupChildProcess()
{
    ::setpgid(0, 0);
    ::close_range(3, ~0u, CLOSE_RANGE_CLOEXEC); // Others may be less careful with theirs.
}

ChildProcess::ChildProcess()
    : m_mark("NORVO_PROCESS_" + QUuid::createUuid().toRfc4122().toHex()), m_parent(::getpid())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(m_mark, "1");
    setProcessEnvironment(environment);
    setProcessChannelMode(ForwardedChannels); // Until setupChildProcess() puts our own in place.
    setInputChannelMode(ForwardedInputChannel);
}

ChildProcess::~ChildProcess()
{
    killAll();
    const QSignalBlocker silent(this);
    waitForFinished(); // The base would wait as long, and complain.
    m_guard.waitForFinished();
}

void ChildProcess::launch(const QString& path, const QStringList& arguments)
{
    Pipe input = openPipe();
    Pipe output = openPipe();
    Pipe errors = openPipe();
    if (!input.readEnd.isOpen() || !output.readEnd.isOpen() || !errors.readEnd.isOpen()) {
        const QString reason = qt_error_string(errno);
        input = Pipe();
        output = Pipe();
        errors = Pipe();
        setErrorString(reason);
        emit errorOccurred(FailedToStart);
        return;
    }
    m_programEnds = {input.readEnd.get(), output.writeEnd.get(), errors.writeEnd.get()};
    ::signal(SIGPIPE, SIG_IGN); // Writing to a program that has gone fails, and that is all.
    // No signal handler of ours may run in the child.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    start(path, arguments);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    m_group = pid_t(processId());
    if (m_group == 0) {
        return;
    }
    ::setpgid(m_group, m_group); // Whichever of the two comes first.
    m_input = std::move(input.writeEnd);
    m_output = std::move(output.readEnd);
    m_errors = std::move(errors.readEnd);
    ::fcntl(m_input.get(), F_SETFL, O_NONBLOCK);
    m_inputNotifier = std::make_unique<QSocketNotifier>(m_input.get(), QSocketNotifier::Write);
    m_inputNotifier->setEnabled(false);
    connect(m_inputNotifier.get(), &QSocketNotifier::activated, this, &ChildProcess::sendWaiting);
    // The program's ends: the guard must not hold them open, however briefly.
    input = Pipe();
    output = Pipe();
    errors = Pipe();
    // After a SIGKILL of ours the kernel kills the program alone. What a dying process starts
    // meanwhile is found by a later pass.
    m_guard.setStandardOutputFile(nullDevice());
    m_guard.setStandardErrorFile(nullDevice());
    m_guard.start("/bin/sh", {"-c",
                              "read _; kill -KILL -$0; for pass in 1 2 3; do "
                              "grep -lsz \"^$1=\" /proc/[0-9]*/environ | cut -d/ -f3 | "
                              "xargs -r kill -KILL; done",
                              QString::number(m_group), m_mark});
}

void ChildProcess::setupChildProcess()
{
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action = {};
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            ::signal(number, SIG_DFL);
        }
    }
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != m_parent) { // Gone before the kernel knew that we care.
        ::_exit(127);
    }
    for (int i = 0; i < 3; ++i) {
        ::dup2(m_programEnds[std::size_t(i)], i);
    }
    GroupLeader::setupChildProcess();
}

bool ChildProcess::send(const QByteArray& bytes)
{
    if (!m_input.isOpen() || m_waiting.size() + bytes.size() > kMaxWaiting) {
        return false;
    }
    m_waiting.append(bytes);
    sendWaiting();
    return m_input.isOpen();
}

void ChildProcess::sendWaiting()
{
    const ssize_t count = ::write(m_input.get(), m_waiting.constData(), size_t(m_waiting.size()));
    if (count < 0 && errno != EAGAIN && errno != EINTR) {
        closeInput();
        return;
    }
    m_waiting.remove(0, int(std::max<ssize_t>(count, 0)));
    m_inputNotifier->setEnabled(!m_waiting.isEmpty());
}

void ChildProcess::closeInput()
{
    m_waiting.clear();
    m_inputNotifier->setEnabled(false);
    m_input.close();
}

void ChildProcess::terminateAll()
{
    if (m_group > 0) {
        closeInput();
        ::kill(-m_group, SIGTERM);
        ::kill(-m_group, SIGCONT); // One that has been stopped could not hear of it.
    }
}

void ChildProcess::killAll()
{
    if (m_group == 0) {
        return;
    }
    const QSignalBlocker silent(this);
    ::kill(-std::exchange(m_group, 0), SIGKILL);
    waitForFinished(kKillWaitMs);
    // What a dying process starts meanwhile is found by a later pass.
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const std::vector<pid_t> left = markedProcesses(m_mark);
        if (left.empty()) {
            break;
        }
        for (const pid_t process : left) {
            ::kill(process, SIGKILL);
        }
    }
    m_guard.kill();
    m_guard.waitForFinished(kKillWaitMs);
}

bool ChildProcess::waitForEndOfAll(std::chrono::milliseconds limit)
{
    if (state() != NotRunning && !waitForFinished(int(limit.count()))) {
        return false;
    }
    const bool allEnded = m_group == 0 || markedProcesses(m_mark).empty();
    if (!allEnded) {
        ::usleep(useconds_t(limit / std::chrono::microseconds(1))); // Looking is not cheap.
    }
    return allEnded;
}

} // namespace norvo
