// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/mqtt/BrokerExchange.h"
#include "plugins/mqtt/BrokerSettings.h"

#include <QElapsedTimer>

#include <chrono>
#include <optional>

namespace norvo {

/// Keeps the connection, in the thread of a BrokerThread, until that is stopped.
class BrokerWorker
{
public:
    BrokerWorker(const BrokerSettings& settings, BrokerExchange& exchange);

    void run();

private:
    using Milliseconds = std::chrono::milliseconds;

    bool isStopping() const;
    void waitFor(Milliseconds time) const;
    int poll(const BrokerConnection& connection, Milliseconds time) const;
    Milliseconds serve();
    void turn(BrokerConnection& connection);
    void watch(BrokerConnection& connection);
    void discardSession(BrokerConnection& connection);
    void begin(BrokerConnection& connection);
    void end(const BrokerConnection& connection);
    void takeRequests(BrokerConnection& connection);
    std::optional<QVector<TopicFilter>> takeFilters();
    std::optional<Publication> takePublication();
    void say(BrokerConnection& connection, const char* status) const;
    void flush(BrokerConnection& connection, const QElapsedTimer& clock);
    void bidFarewell(BrokerConnection& connection);
    void tell(News::Kind kind, const QString& text = {});
    void wakeReader();

    const BrokerSettings m_settings;
    BrokerExchange& m_exchange;
    /// Whether the broker may have a session that is not to be used. It is thrown away with a
    /// connection of its own: brokers may keep one that starts clean in memory only.
    bool m_mustDiscard = m_settings.keepsSession;
    bool m_hasDiscarded = false;
    bool m_hasSession = false;
    bool m_isUp = false;
    QElapsedTimer m_opened;
    QElapsedTimer m_up;
    QElapsedTimer m_heard; ///< Since anything came from the broker.
    QElapsedTimer m_asked; ///< Since it was asked to answer; invalid once it has.
};

} // namespace norvo
