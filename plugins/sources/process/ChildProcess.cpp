// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/ChildProcess.h"

#include "plugins/sources/process/MarkedProcesses.h"

#include <QPointer>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <vector>

#include <sys/syscall.h>
#include <sys/wait.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr int kMaxWaiting = 1024 * 1024;
constexpr auto kExitPoll = 50ms;
constexpr auto kPoll = 2ms;
constexpr auto kKillWait = 200ms;
constexpr int kMaxPasses = 3;

} // namespace

ChildProcess::~ChildProcess()
{
    kill();
}

void ChildProcess::start(const QString& path, const QStringList& arguments)
{
    Q_ASSERT(m_pid < 0);
    m_mark = newProcessMark();
    Launched launched = launch(path, arguments, m_mark);
    if (launched.pid < 0) {
        QTimer::singleShot(0, this, [this, error = launched.error] { emit failed(error); });
        return;
    }
    m_pid = launched.pid;
    m_input = std::move(launched.input);
    m_output = std::move(launched.output);
    m_errors = std::move(launched.errors);
    m_status = std::move(launched.status);
    m_guard = std::make_unique<GroupGuard>(m_pid, m_mark);
    m_inputNotifier = std::make_unique<QSocketNotifier>(m_input.get(), QSocketNotifier::Write);
    m_inputNotifier->setEnabled(false);
    connect(m_inputNotifier.get(), &QSocketNotifier::activated, this, &ChildProcess::sendWaiting);
    m_statusNotifier = std::make_unique<QSocketNotifier>(m_status.get(), QSocketNotifier::Read);
    connect(m_statusNotifier.get(), &QSocketNotifier::activated, this, &ChildProcess::readStatus);
}

void ChildProcess::readStatus()
{
    int reason = 0;
    const ssize_t count = ::read(m_status.get(), &reason, sizeof reason);
    if (count < 0 && errno == EINTR) {
        return;
    }
    m_statusNotifier->setEnabled(false);
    if (count == sizeof reason) {
        kill();
        emit failed(QString::fromLocal8Bit(std::strerror(reason)));
        return;
    }
    const QPointer<ChildProcess> self(this);
    emit started();
    if (self) {
        watchExit();
    }
}

void ChildProcess::watchExit()
{
    m_exit = FileDescriptor(m_reaped ? -1 : int(::syscall(SYS_pidfd_open, m_pid, 0)));
    if (m_exit.isOpen()) {
        m_exitNotifier = std::make_unique<QSocketNotifier>(m_exit.get(), QSocketNotifier::Read);
        connect(m_exitNotifier.get(), &QSocketNotifier::activated, this, &ChildProcess::checkExit);
    } else {
        connect(&m_exitPoll, &QTimer::timeout, this, &ChildProcess::checkExit);
        m_exitPoll.start(kExitPoll);
    }
}

void ChildProcess::checkExit()
{
    // Looked at but not reaped: until then its number, which is the group's as well, is ours.
    siginfo_t info = {};
    const bool looked = ::waitid(P_PID, id_t(m_pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
    if (looked && info.si_pid == 0) {
        return;
    }
    m_exitPoll.stop();
    if (m_exitNotifier) {
        m_exitNotifier->setEnabled(false);
    }
    kill();
    emit exited(m_code);
}

bool ChildProcess::reap()
{
    if (m_pid < 0 || m_reaped) {
        return true;
    }
    int status = 0;
    const pid_t pid = ::waitpid(m_pid, &status, WNOHANG);
    if (pid == 0 || (pid < 0 && errno == EINTR)) {
        return false;
    }
    m_reaped = true;
    m_code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return true;
}

bool ChildProcess::write(const QByteArray& bytes)
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
    while (!m_waiting.isEmpty()) {
        const ssize_t count =
            ::write(m_input.get(), m_waiting.constData(), size_t(m_waiting.size()));
        if (count >= 0) {
            m_waiting.remove(0, int(count));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            break;
        } else if (errno != EINTR) {
            m_waiting.clear();
            m_inputNotifier->setEnabled(false);
            m_input.close();
            return;
        }
    }
    m_inputNotifier->setEnabled(!m_waiting.isEmpty());
}

void ChildProcess::terminate()
{
    if (m_pid < 0 || m_allEnded) {
        return;
    }
    m_waiting.clear();
    m_inputNotifier->setEnabled(false);
    m_input.close();
    ::kill(-m_pid, SIGTERM);
    ::kill(-m_pid, SIGCONT); // One that has been stopped could not hear of it.
}

void ChildProcess::kill()
{
    if (m_pid < 0 || m_allEnded) {
        return;
    }
    ::kill(-m_pid, SIGKILL);
    for (auto waited = 0ms; !reap() && waited < kKillWait; waited += kPoll) {
        ::usleep(kPoll / 1us);
    }
    killMarked();
    m_allEnded = true;
    m_guard.reset();
}

void ChildProcess::killMarked()
{
    // What a dying process starts meanwhile is found by a later pass.
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const std::vector<pid_t> left = markedProcesses(m_mark);
        if (left.empty()) {
            return;
        }
        for (const pid_t process : left) {
            ::kill(process, SIGKILL);
        }
    }
}

bool ChildProcess::waitForEnd(std::chrono::milliseconds limit)
{
    for (auto waited = 0ms; !reap() && waited < limit; waited += kPoll) {
        ::usleep(kPoll / 1us);
    }
    if (m_reaped && !m_allEnded) {
        m_allEnded = markedProcesses(m_mark).empty();
        ::usleep(m_allEnded ? 0 : limit / 1us); // Looking is not cheap.
    }
    return m_pid < 0 || m_allEnded;
}

} // namespace norvo
