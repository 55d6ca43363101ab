// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/BackgroundWriter.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
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

} // namespace

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
        m_isWriting = true;
        lock.unlock();
        writeAll(m_descriptor, line);
        lock.lock();
        m_waiting -= cost(line);
        m_isWriting = false;
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

} // namespace norvo
