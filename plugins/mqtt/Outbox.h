// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/mqtt/BrokerConnection.h"

#include <cstddef>
#include <deque>
#include <optional>

namespace norvo {

/// Publications that wait to be sent, in order and within bounds.
class Outbox
{
public:
    static constexpr std::size_t kMaxCount = 1000;
    static constexpr qint64 kMaxBytes = 4LL * 1024 * 1024; ///< Of payloads.

    bool push(Publication what); ///< False: it is full and stays as it is.
    std::optional<Publication> takeFirst();
    std::size_t clear(); ///< How many there were.

private:
    std::deque<Publication> m_waiting;
    qint64 m_bytes = 0;
};

} // namespace norvo
