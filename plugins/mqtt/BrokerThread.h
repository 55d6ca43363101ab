// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/mqtt/BrokerConnection.h"
#include "plugins/mqtt/BrokerSettings.h"
#include "plugins/mqtt/NewsQueue.h"

#include <QVector>

#include <functional>
#include <memory>
#include <thread>

namespace norvo {

/// Keeps a connection to a broker, in a thread of its own, until it is stopped.
///
/// A connection that breaks or does not come up is tried again after a growing delay. With
/// BrokerSettings::keepsSession the broker keeps, up to ten minutes, what it has taken with QoS 1
/// and 2 for this thread and sends it when the connection is back; what was to be kept from the
/// panel's last run is thrown away at the start.
///
/// What is to be published is never kept beyond the connection for which it was given.
class BrokerThread
{
public:
    enum class Answer { Taken, NotConnected, Full };

    /// Counts since the last call of takeLosses().
    struct Losses
    {
        qint64 oversized = 0;   ///< Messages that were too long.
        qint64 refused = 0;     ///< Publications that this broker does not take.
        qint64 unconfirmed = 0; ///< Publications that have not or may not have arrived.
    };

    /// `wake` is called in the thread when there are news, and again only after resume().
    BrokerThread(const BrokerSettings& settings, std::function<void()> wake);
    ~BrokerThread(); ///< Waits for the thread, a second at most. `wake` is not called any more.
    BrokerThread(const BrokerThread&) = delete;
    BrokerThread& operator=(const BrokerThread&) = delete;

    Answer publish(Publication what);
    void subscribe(QVector<TopicFilter> filters); ///< To these and no others, also later.
    void stop();                                  ///< Does not wait.

    NewsQueue& news();
    bool resume(); ///< Asks to be woken again; false when there are news already.
    Losses takeLosses();

private:
    struct Shared;
    class Worker;

    const std::shared_ptr<Shared> m_shared; ///< Outlives this object where the thread does.
    std::thread m_thread;
};

} // namespace norvo
