// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/mqtt/BrokerConnection.h"
#include "plugins/mqtt/NewsQueue.h"
#include "plugins/mqtt/Outbox.h"

#include <QVector>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace norvo {

/// Counts since they were taken last.
struct BrokerLosses
{
    qint64 oversized = 0;   ///< Messages that were too long.
    qint64 refused = 0;     ///< Publications that this broker does not take.
    qint64 unconfirmed = 0; ///< Publications that have not or may not have arrived.
};

/// What the thread of a broker's connection and the one that has it both use. The mutex guards all
/// but the news and the event.
struct BrokerExchange
{
    explicit BrokerExchange(std::function<void()> wakeReader) : wake(std::move(wakeReader)) {}
    BrokerExchange(const BrokerExchange&) = delete;
    BrokerExchange& operator=(const BrokerExchange&) = delete;
    ~BrokerExchange() { ::close(event); }

    void notify() const { ::eventfd_write(event, 1); }

    const int event = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC); ///< Wakes the thread.
    NewsQueue news;
    std::mutex mutex;
    std::condition_variable ended;
    std::function<void()> wake; ///< Empty once nobody is there to be woken.
    bool isReaderAsleep = true;
    bool isUp = false;
    bool isStopping = false;
    bool hasEnded = false;
    Outbox outbox;
    QVector<TopicFilter> filters;
    bool hasNewFilters = false;
    BrokerLosses losses;
};

} // namespace norvo
