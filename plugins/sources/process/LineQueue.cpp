// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/LineQueue.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace norvo {

void LineQueue::append(const char* data, int size)
{
    const char* const end = data + size;
    while (data < end) {
        const auto* feed = static_cast<const char*>(std::memchr(data, '\n', size_t(end - data)));
        const int length = int((feed ? feed : end) - data);
        if (feed && m_openLine.isEmpty() && length <= m_limits.lineBytes) {
            m_lines.append(data, length + 1);
            ++m_count;
        } else {
            extendOpenLine(data, length);
            if (feed) {
                closeOpenLine();
            }
        }
        data += length + 1;
    }
    enforceLimits();
}

void LineQueue::extendOpenLine(const char* data, int size)
{
    const int room = m_limits.lineBytes - m_openLine.size();
    if (size > room && !m_openLineIsCut) {
        m_openLineIsCut = true;
        ++m_cut;
    }
    m_openLine.append(data, std::min(size, room));
}

void LineQueue::closeOpenLine()
{
    m_lines.append(m_openLine).append('\n');
    ++m_count;
    m_openLine.clear();
    m_openLineIsCut = false;
}

void LineQueue::finish()
{
    if (!m_openLine.isEmpty()) {
        closeOpenLine();
        enforceLimits();
    }
}

void LineQueue::enforceLimits()
{
    while (m_count > m_limits.lines || (m_count > 1 && m_lines.size() - m_head > m_limits.bytes)) {
        removeFirst(endOfFirst());
        ++m_dropped;
    }
}

int LineQueue::endOfFirst() const
{
    return m_lines.indexOf('\n', m_head);
}

QByteArray LineQueue::takeFirst()
{
    Q_ASSERT(!isEmpty());
    const int end = endOfFirst();
    const bool hasReturn = end > m_head && m_lines.at(end - 1) == '\r';
    QByteArray line = m_lines.mid(m_head, end - m_head - (hasReturn ? 1 : 0));
    removeFirst(end);
    return line;
}

void LineQueue::removeFirst(int end)
{
    m_head = end + 1;
    --m_count;
    if (m_count == 0) {
        m_lines.clear();
        m_head = 0;
    } else if (m_head > m_lines.size() / 2) {
        m_lines.remove(0, m_head);
        m_head = 0;
    }
}

qint64 LineQueue::takeDropped()
{
    return std::exchange(m_dropped, 0);
}

qint64 LineQueue::takeCut()
{
    return std::exchange(m_cut, 0);
}

void LineQueue::clear()
{
    m_lines.clear();
    m_openLine.clear();
    m_head = 0;
    m_count = 0;
    m_openLineIsCut = false;
}

} // namespace norvo
