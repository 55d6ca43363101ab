// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/LinePump.h"

#include <QElapsedTimer>
#include <QPointer>

#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

#include <fcntl.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr int kReadBytes = 64 * 1024;
constexpr int kMaxPipeSize = 1024 * 1024; ///< The largest pipe that Linux gives by default.
constexpr qint64 kTurnNanoseconds = 2000000;
constexpr auto kPause = 5ms;

} // namespace

LinePump::LinePump(FileDescriptor readEnd, const LineQueue::Limits& limits, QObject* parent)
    : QObject(parent),
      m_pipe(std::move(readEnd)),
      m_notifier(m_pipe.get(), QSocketNotifier::Read),
      m_queue(limits)
{
    ::fcntl(m_pipe.get(), F_SETFL, ::fcntl(m_pipe.get(), F_GETFL) | O_NONBLOCK);
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    connect(&m_notifier, &QSocketNotifier::activated, this, &LinePump::turn);
    connect(&m_pause, &QTimer::timeout, this, &LinePump::turn);
}

void LinePump::finish()
{
    readRest();
    m_queue.finish();
    m_atEnd = true;
    m_finished = true;
    m_notifier.setEnabled(false);
    m_pause.start(0ms);
}

void LinePump::discard()
{
    readRest();
    m_queue.clear();
}

void LinePump::readRest()
{
    int count = 1;
    for (int total = 0; count > 0 && total < kMaxPipeSize; total += count) {
        count = readOnce();
    }
}

void LinePump::turn()
{
    if (m_inTurn) { // A receiver runs an event loop of its own.
        return;
    }
    m_inTurn = true;
    m_notifier.setEnabled(false);
    const bool pipeWasFull = !m_atEnd && readOnce() == kReadBytes;

    const QPointer<LinePump> self(this);
    QElapsedTimer clock;
    clock.start();
    while (!m_queue.isEmpty() && clock.nsecsElapsed() < kTurnNanoseconds) {
        emit line(m_queue.takeFirst());
        if (!self) {
            return;
        }
    }
    m_inTurn = false;
    if (pipeWasFull || !m_queue.isEmpty()) {
        m_pause.start(kPause);
    } else if (m_finished) {
        emit drained();
    } else if (!m_atEnd) {
        m_notifier.setEnabled(true);
    }
}

int LinePump::readOnce()
{
    std::array<char, kReadBytes> block;
    ssize_t count = 0;
    do {
        errno = 0; // The end of the stream sets none.
        count = ::read(m_pipe.get(), block.data(), block.size());
    } while (count < 0 && errno == EINTR);
    if (count > 0) {
        m_queue.append(block.data(), int(count));
    } else if (errno != EAGAIN) {
        m_atEnd = true;
        m_queue.finish();
    }
    return int(count);
}

} // namespace norvo
