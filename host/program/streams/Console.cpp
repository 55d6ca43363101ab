// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/streams/Console.h"

#include "host/yaml/Quote.h"

#include <QStringList>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 500ms; ///< With a reader that takes nothing.
constexpr auto kMaxFinish = 2s;

/// What a line that waits takes of the memory, more or less.
int cost(const QByteArray& line)
{
    return line.size() + 64;
}

/// Waits for the reader as long as that takes. A reader that is gone is no error.
void writeAll(int descriptor, const QByteArray& line)
{
    int done = 0;
    while (done < line.size()) {
        const ssize_t written =
            ::write(descriptor, line.constData() + done, std::size_t(line.size() - done));
        if (written > 0) {
            done += int(written);
        } else if (errno == EAGAIN) {
            pollfd waiting{descriptor, POLLOUT, 0}; // Whoever shares the descriptor made it so.
            ::poll(&waiting, 1, -1);
        } else if (errno != EINTR) {
            return;
        }
    }
}

/// Writes lines to a file descriptor from a thread of its own, so that a reader that stalls holds
/// up neither the window nor a device. What finds no room is lost and counted, and a line says how
/// much that was as soon as it can be read.
///
/// Must live as long as the process, because nothing ends a thread whose reader has stalled.
class BackgroundWriter
{
public:
    static constexpr int kMaxWaiting = 1 << 20; ///< Bytes; the errors of a panel are less.

    explicit BackgroundWriter(int descriptor) : m_descriptor(descriptor) {}

    void write(const QByteArray& line); ///< With its line feed. From any thread; never waits.

    /// Waits until all is written, two seconds at most and half a second for a reader that stalls.
    void finish();

private:
    void start();
    void run();
    void add(const QByteArray& line);
    void addLoss();
    bool isIdle() const { return m_waiting == 0 && m_lost == 0; }

    const int m_descriptor;
    std::mutex m_mutex; ///< Of everything below.
    std::condition_variable m_changed;
    std::deque<QByteArray> m_lines;
    int m_waiting = 0; ///< Bytes of m_lines and of the line that is being written.
    std::int64_t m_lost = 0;
    std::int64_t m_written = 0; ///< Lines.
    bool m_isStarted = false;
};

void BackgroundWriter::write(const QByteArray& line)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    start();
    if (m_waiting + cost(line) > kMaxWaiting) {
        ++m_lost;
        return;
    }
    addLoss();
    add(line);
    m_changed.notify_all();
}

void BackgroundWriter::finish()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto end = std::chrono::steady_clock::now() + kMaxFinish;
    std::int64_t before = -1;
    while (m_written != before && std::chrono::steady_clock::now() < end) {
        before = m_written;
        if (m_changed.wait_for(lock, kPatience, [this] { return isIdle(); })) {
            return;
        }
    }
}

void BackgroundWriter::start()
{
    if (m_isStarted) {
        return;
    }
    try {
        std::thread(&BackgroundWriter::run, this).detach();
        m_isStarted = true;
    } catch (const std::system_error&) {
        // The system has no thread to give. The next line asks again.
    }
}

void BackgroundWriter::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return !m_lines.empty(); });
        const QByteArray line = m_lines.front();
        m_lines.pop_front();
        lock.unlock();
        writeAll(m_descriptor, line);
        lock.lock();
        m_waiting -= cost(line);
        ++m_written;
        if (m_lines.empty()) {
            addLoss();
        }
        m_changed.notify_all();
    }
}

void BackgroundWriter::add(const QByteArray& line)
{
    m_lines.push_back(line);
    m_waiting += cost(line);
}

void BackgroundWriter::addLoss()
{
    if (m_lost > 0) {
        add("norvo-panel: " + QByteArray::number(qint64(m_lost)) +
            " messages lost, because standard error was not read\n");
        m_lost = 0;
    }
}

/// Never destroyed; see there.
BackgroundWriter& errors()
{
    static auto* const writer = new BackgroundWriter(STDERR_FILENO);
    return *writer;
}

QByteArray printable(const QString& text)
{
    QByteArray lines;
    for (const QString& line : text.split('\n')) {
        lines += onOneLine(line).toUtf8() + '\n';
    }
    return lines;
}

} // namespace

void Console::open()
{
    // Here for the whole process: a write to a reader that is gone then fails and does no more.
    std::signal(SIGPIPE, SIG_IGN);
    for (int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            ::open("/dev/null", O_RDWR); // Takes the lowest number that is free: this one.
        }
    }
    std::atexit(finish);
}

void Console::print(const QString& line)
{
    std::fputs(printable(line).constData(), stdout);
    std::fflush(stdout);
}

void Console::report(const QString& lines)
{
    errors().write(printable(lines));
}

void Console::reportEach(const QStringList& texts)
{
    for (const QString& text : texts) {
        report(text);
    }
}

void Console::reportError(const QString& text)
{
    report("norvo-panel: " + text);
}

void Console::finish()
{
    errors().finish();
}

} // namespace norvo
