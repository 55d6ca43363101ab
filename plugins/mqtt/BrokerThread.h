// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/mqtt/BrokerExchange.h"
#include "plugins/mqtt/BrokerSettings.h"

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
    BrokerLosses takeLosses();

private:
    /// Outlives this object where the thread does.
    const std::shared_ptr<BrokerExchange> m_exchange;
    std::thread m_thread;
};

} // namespace norvo
