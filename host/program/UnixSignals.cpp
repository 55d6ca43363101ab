#include "host/program/UnixSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace norvo {

namespace {

int s_pipe[2] = {-1, -1};

/// A pipe that is full holds enough to wake the program: what does not fit may be lost.
void noteSignal(int)
{
    const int saved = errno;
    const char byte = 0;
    const ssize_t ignored = ::write(s_pipe[1], &byte, 1);
    static_cast<void>(ignored);
    errno = saved;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace

UnixSignals::UnixSignals(QObject* parent) : QObject(parent)
{
    Q_ASSERT(s_pipe[0] < 0);
    if (pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // Out of file descriptors: the signals go on ending the process.
    }
    m_notifier = std::make_unique<QSocketNotifier>(s_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &UnixSignals::drain);
    setHandler(noteSignal);
}

UnixSignals::~UnixSignals()
{
    if (!m_notifier) {
        return;
    }
    setHandler(SIG_DFL);
    m_notifier.reset();
    for (int& end : s_pipe) {
        ::close(end);
        end = -1;
    }
}

void UnixSignals::drain()
{
    char bytes[64];
    while (::read(s_pipe[0], bytes, sizeof bytes) > 0) {
    }
    emit stopRequested();
}

} // namespace norvo
