// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/serial/Framing.h"

#include <QByteArray>

#include <deque>

namespace norvo {

/// Cuts a stream of bytes into frames and keeps the newest of them, within fixed bounds for any
/// input.
///
/// Who joins a stream does not know whether the first byte begins a frame. So what comes before the
/// first pause is thrown away, for lines up to the first end, or nothing where a pause came first.
class FrameQueue
{
public:
    struct Limits
    {
        int frames; ///< When more wait, the oldest go.
        int bytes;  ///< The same for the bytes of all of them; the newest always stays.
    };
    /// What has been lost since the last call of takeLosses().
    struct Losses
    {
        qint64 dropped = 0;    ///< Frames that came too fast.
        qint64 tooLong = 0;    ///< Frames: lines are cut, of prefixed ones nothing is kept.
        qint64 incomplete = 0; ///< Frames that broke off.
        qint64 stray = 0;      ///< Bytes before the first pause, but for lines.
    };

    FrameQueue(const Framing& framing, const Limits& limits) : m_framing(framing), m_limits(limits)
    {}

    bool isEmpty() const { return m_frames.empty(); }
    bool isInStep() const { return m_isInStep; } ///< Whether it knows where frames begin.
    bool isInFrame() const { return !m_open.isEmpty(); }

    void append(const QByteArray& bytes);
    /// Nothing has come for a while: the next byte begins a frame, unless a line has begun.
    void notePause();
    QByteArray takeFirst(); ///< Without end or prefix; before a line feed, also without a return.
    Losses takeLosses();
    void restart(); ///< Another stream begins. What waits is dropped.

private:
    int cutLines();
    int cutFixed();
    int cutPrefixed();
    void keep(QByteArray frame);
    void shortenOpenLine();
    void loseStep(); ///< And what has come of the stream.

    Framing m_framing;
    Limits m_limits;
    std::deque<QByteArray> m_frames;
    int m_bytes = 0;    ///< Of all of them.
    QByteArray m_open;  ///< What has come of the next ones.
    int m_searched = 0; ///< No end begins before this place of the open bytes.
    bool m_isInStep = false;
    Losses m_losses;
};

} // namespace norvo
