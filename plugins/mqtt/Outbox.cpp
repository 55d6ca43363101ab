// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/Outbox.h"

#include <utility>

namespace norvo {

bool Outbox::push(Publication what)
{
    const qint64 bytes = m_bytes + what.payload.size();
    if (m_waiting.size() >= kMaxCount || bytes > kMaxBytes) {
        return false;
    }
    m_bytes = bytes;
    m_waiting.push_back(std::move(what));
    return true;
}

std::optional<Publication> Outbox::takeFirst()
{
    if (m_waiting.empty()) {
        return std::nullopt;
    }
    std::optional<Publication> first = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_bytes -= first->payload.size();
    return first;
}

std::size_t Outbox::clear()
{
    m_bytes = 0;
    return std::exchange(m_waiting, {}).size();
}

} // namespace norvo
