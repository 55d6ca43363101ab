// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace norvo {

/// Cuts a stream of bytes into lines and keeps the newest of them, within fixed bounds for any
/// input.
class LineQueue
{
public:
    struct Limits
    {
        int lineBytes; ///< What a line has beyond is thrown away.
        int lines;     ///< When more wait, the oldest go.
        int bytes;     ///< The same for the bytes of all of them; the newest line always stays.
    };

    explicit LineQueue(const Limits& limits) : m_limits(limits) {}

    bool isEmpty() const { return m_count == 0; }
    bool hasLosses() const { return m_dropped > 0 || m_cut > 0; }

    void append(const char* data, int size);
    void finish(); ///< No more comes: what lacks its line feed is a line as well.
    /// The oldest line without its line feed and the carriage return before it.
    QByteArray takeFirst();
    qint64 takeDropped(); ///< Lines dropped since the last call.
    qint64 takeCut();     ///< Lines cut since the last call.
    void clear();         ///< Forgets all lines, uncounted.

private:
    void extendOpenLine(const char* data, int size);
    void closeOpenLine();
    void enforceLimits();
    int endOfFirst() const;
    void removeFirst(int end);

    Limits m_limits;
    QByteArray m_lines; ///< Each with its line feed.
    int m_head = 0;     ///< Where the oldest one begins.
    int m_count = 0;
    QByteArray m_openLine;
    bool m_openLineIsCut = false;
    qint64 m_dropped = 0;
    qint64 m_cut = 0;
};

} // namespace norvo
