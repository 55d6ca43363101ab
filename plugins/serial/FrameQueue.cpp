// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/FrameQueue.h"

#include <algorithm>
#include <utility>

namespace norvo {

void FrameQueue::append(const QByteArray& bytes)
{
    const bool isLine = m_framing.kind == Framing::Kind::Line;
    if (!m_isInStep && !isLine) {
        m_losses.stray += bytes.size();
        return;
    }
    m_open += bytes;
    const int done = isLine                                   ? cutLines()
                     : m_framing.kind == Framing::Kind::Fixed ? cutFixed()
                                                              : cutPrefixed();
    m_open.remove(0, done);
    if (isLine) {
        shortenOpenLine();
    }
}

int FrameQueue::cutLines()
{
    const QByteArray& end = m_framing.end;
    int begin = 0;
    for (int found = m_open.indexOf(end, m_searched); found >= 0;
         found = m_open.indexOf(end, begin)) {
        const bool hasReturn = end == "\n" && found > begin && m_open.at(found - 1) == '\r';
        const int length = found - begin - (hasReturn ? 1 : 0);
        if (m_isInStep) {
            m_losses.tooLong += length > Framing::kMaxLength ? 1 : 0;
            keep(m_open.mid(begin, std::min(length, Framing::kMaxLength)));
        }
        m_isInStep = true;
        begin = found + end.size();
    }
    m_searched = std::max(0, m_open.size() - begin - end.size() + 1);
    return begin;
}

/// Of a line that is too long stays its beginning, a byte more that says so, and what may be the
/// beginning of its end.
void FrameQueue::shortenOpenLine()
{
    const int limit = Framing::kMaxLength + 2; // A carriage return may be part of the end.
    const int tail = m_framing.end.size();
    if (m_open.size() > limit + tail) {
        m_open = m_open.left(limit) + m_open.right(tail);
        m_searched = limit + 1; // That many of the tail can be no whole end.
    }
}

int FrameQueue::cutFixed()
{
    int begin = 0;
    for (; m_open.size() - begin >= m_framing.length; begin += m_framing.length) {
        keep(m_open.mid(begin, m_framing.length));
    }
    return begin;
}

int FrameQueue::cutPrefixed()
{
    const int prefix = m_framing.prefixBytes;
    int begin = 0;
    while (m_open.size() - begin >= prefix) {
        const quint32 length = m_framing.readLength(m_open.constData() + begin);
        if (length > quint32(Framing::kMaxLength)) {
            ++m_losses.tooLong;
            loseStep();
            return 0;
        }
        if (m_open.size() - begin - prefix < int(length)) {
            break;
        }
        keep(m_open.mid(begin + prefix, int(length)));
        begin += prefix + int(length);
    }
    return begin;
}

void FrameQueue::keep(QByteArray frame)
{
    m_bytes += frame.size();
    m_frames.push_back(std::move(frame));
    while (int(m_frames.size()) > m_limits.frames ||
           (m_frames.size() > 1 && m_bytes > m_limits.bytes)) {
        takeFirst();
        ++m_losses.dropped;
    }
}

void FrameQueue::notePause()
{
    if (m_framing.kind == Framing::Kind::Line) {
        m_isInStep = m_isInStep || m_open.isEmpty();
        return;
    }
    m_losses.incomplete += m_open.isEmpty() ? 0 : 1;
    m_open.clear();
    m_isInStep = true;
}

QByteArray FrameQueue::takeFirst()
{
    Q_ASSERT(!isEmpty());
    QByteArray frame = std::move(m_frames.front());
    m_frames.pop_front();
    m_bytes -= frame.size();
    return frame;
}

FrameQueue::Losses FrameQueue::takeLosses()
{
    return std::exchange(m_losses, {});
}

void FrameQueue::restart()
{
    m_losses.dropped += qint64(m_frames.size());
    m_frames.clear();
    m_bytes = 0;
    loseStep();
}

void FrameQueue::loseStep()
{
    m_open.clear();
    m_searched = 0;
    m_isInStep = false;
}

} // namespace norvo
