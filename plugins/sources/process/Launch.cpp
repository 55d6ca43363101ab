// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/Launch.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>

namespace norvo {

namespace {

struct Pipe
{
    FileDescriptor readEnd;
    FileDescriptor writeEnd;

    bool isOpen() const { return readEnd.isOpen() && writeEnd.isOpen(); }
};

/// Clear of the three standard ones, which the child's ends are about to become.
FileDescriptor clearOfStandard(int fd)
{
    FileDescriptor low(fd);
    return fd > STDERR_FILENO ? std::move(low) : FileDescriptor(::fcntl(fd, F_DUPFD_CLOEXEC, 3));
}

Pipe openPipe()
{
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {FileDescriptor(), FileDescriptor()};
    }
    return {clearOfStandard(ends[0]), clearOfStandard(ends[1])};
}

/// Texts as exec wants them: pointers to them, ended by a null.
class ExecVector
{
public:
    explicit ExecVector(std::vector<QByteArray> texts) : m_texts(std::move(texts))
    {
        for (QByteArray& text : m_texts) {
            m_pointers.push_back(text.data());
        }
        m_pointers.push_back(nullptr);
    }

    char* const* data() const { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_texts;
    std::vector<char*> m_pointers;
};

ExecVector argumentVector(const QString& path, const QStringList& arguments)
{
    std::vector<QByteArray> texts{QFile::encodeName(path)};
    for (const QString& argument : arguments) {
        texts.push_back(argument.toLocal8Bit());
    }
    return ExecVector(std::move(texts));
}

ExecVector markedEnvironment(const QByteArray& mark)
{
    std::vector<QByteArray> texts;
    for (char** entry = environ; *entry; ++entry) {
        texts.emplace_back(*entry);
    }
    texts.push_back(mark + "=1");
    return ExecVector(std::move(texts));
}

void ignoreBrokenPipes()
{
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &action, nullptr);
}

struct ChildEnds
{
    int input;
    int output;
    int errors;
    int status;
};

/// Runs in the child between fork and exec: calls nothing but what is safe there.
[[noreturn]] void becomeProgram(const ExecVector& arguments, const ExecVector& environment,
                                const ChildEnds& ends, pid_t parent)
{
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action = {};
        const bool known = ::sigaction(number, nullptr, &action) == 0;
        if (known && (action.sa_handler != SIG_IGN || number == SIGPIPE)) {
            action = {};
            action.sa_handler = SIG_DFL;
            ::sigaction(number, &action, nullptr);
        }
    }
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);

    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) { // Gone before the kernel knew that we care.
        ::_exit(127);
    }
    ::dup2(ends.input, STDIN_FILENO);
    ::dup2(ends.output, STDOUT_FILENO);
    ::dup2(ends.errors, STDERR_FILENO);
    ::close_range(3, ~0u, CLOSE_RANGE_CLOEXEC); // Others may be less careful with theirs.
    ::execve(arguments.data()[0], arguments.data(), environment.data());

    const int reason = errno;
    const ssize_t written = ::write(ends.status, &reason, sizeof reason);
    ::_exit(written > 0 ? 127 : 126);
}

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

Launched launch(const QString& path, const QStringList& arguments, const QByteArray& mark)
{
    Pipe input = openPipe();
    Pipe output = openPipe();
    Pipe errors = openPipe();
    Pipe status = openPipe();
    Launched launched;
    if (!input.isOpen() || !output.isOpen() || !errors.isOpen() || !status.isOpen()) {
        launched.error = lastError();
        return launched;
    }
    ignoreBrokenPipes();

    const ExecVector vector = argumentVector(path, arguments);
    const ExecVector environment = markedEnvironment(mark);
    const ChildEnds ends{input.readEnd.get(), output.writeEnd.get(), errors.writeEnd.get(),
                         status.writeEnd.get()};
    const pid_t parent = ::getpid();
    // No signal handler of ours may run in the child.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    launched.pid = ::fork();
    if (launched.pid == 0) {
        becomeProgram(vector, environment, ends, parent);
    }
    const QString error = launched.pid < 0 ? lastError() : QString();
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (launched.pid < 0) {
        launched.error = error;
        return launched;
    }
    ::setpgid(launched.pid, launched.pid); // Whichever of the two comes first.
    ::fcntl(input.writeEnd.get(), F_SETFL, O_NONBLOCK);
    launched.input = std::move(input.writeEnd);
    launched.output = std::move(output.readEnd);
    launched.errors = std::move(errors.readEnd);
    launched.status = std::move(status.readEnd);
    return launched;
}

GroupGuard::GroupGuard(pid_t group, const QByteArray& mark)
{
    Pipe lifeline = openPipe();
    if (!lifeline.isOpen()) {
        return;
    }
    // What a dying process starts meanwhile is found by a later pass.
    const char* const script = "read _; kill -KILL -$0; for pass in 1 2 3; do "
                               "grep -lsz \"^$1=\" /proc/[0-9]*/environ | cut -d/ -f3 | "
                               "xargs -r kill -KILL; done";
    const ExecVector vector({"/bin/sh", "-c", script, QByteArray::number(group), mark});
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, lifeline.readEnd.get(), STDIN_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, 3);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP); // Spared by Ctrl+C.
    if (::posix_spawn(&m_pid, "/bin/sh", &actions, &attributes, vector.data(), environ) == 0) {
        m_lifeline = std::move(lifeline.writeEnd);
    } else {
        m_pid = -1;
    }
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
}

GroupGuard::~GroupGuard()
{
    if (m_pid > 0) {
        ::kill(m_pid, SIGKILL);
        ::waitpid(m_pid, nullptr, 0);
    }
}

} // namespace norvo
