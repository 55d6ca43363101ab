// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

namespace norvo {

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
    bool isIdle() const { return m_lines.empty() && m_lost == 0 && !m_isWriting; }

    const int m_descriptor;
    std::mutex m_mutex; ///< Of everything below.
    std::condition_variable m_changed;
    std::deque<QByteArray> m_lines;
    int m_waiting = 0; ///< Bytes of m_lines and of the line that is being written.
    std::int64_t m_lost = 0;
    std::int64_t m_written = 0; ///< Lines.
    bool m_isWriting = false;
    bool m_isStarted = false;
};

} // namespace norvo
