// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstddef>
#include <deque>
#include <utility>

namespace norvo {

/// Messages that wait to be read; when they become too many, the oldest go.
class MessageQueue
{
public:
    static constexpr std::size_t kMaxCount = 50000;
    static constexpr qint64 kMaxBytes = 16 * 1024 * 1024;

    bool isEmpty() const { return m_messages.empty(); }

    void push(QByteArray message)
    {
        m_bytes += message.size();
        m_messages.push_back(std::move(message));
        while (m_messages.size() > kMaxCount || m_bytes > kMaxBytes) {
            takeFirst();
            ++m_dropped;
        }
    }
    QByteArray takeFirst()
    {
        QByteArray first = std::move(m_messages.front());
        m_messages.pop_front();
        m_bytes -= first.size();
        return first;
    }
    void drop() ///< All of them.
    {
        m_dropped += qint64(m_messages.size());
        m_messages.clear();
        m_bytes = 0;
    }
    qint64 takeDropped() { return std::exchange(m_dropped, 0); } ///< Since the last call.

private:
    std::deque<QByteArray> m_messages;
    qint64 m_bytes = 0;
    qint64 m_dropped = 0;
};

} // namespace norvo
