// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/BrokerWorker.h"

#include "plugins/common/RetryDelay.h"

#include <utility>

#include <poll.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr int kMaxUnconfirmed = 20; ///< At a time; what comes after them waits in the outbox.
constexpr auto kMaxOpening = 5s;
constexpr auto kMaxDelay = 10s;
constexpr auto kFarewell = 500ms;
constexpr auto kTick = 100ms;
constexpr auto kOpeningTick = 20ms;

} // namespace

BrokerWorker::BrokerWorker(const BrokerSettings& settings, BrokerExchange& exchange)
    : m_settings(settings), m_exchange(exchange)
{}

void BrokerWorker::run()
{
    RetryDelay delay(kMaxDelay);
    while (!isStopping()) {
        const Milliseconds lasted = serve();
        if (!std::exchange(m_hasDiscarded, false)) {
            waitFor(delay.nextJittered(lasted));
        }
    }
}

bool BrokerWorker::isStopping() const
{
    const std::lock_guard lock(m_exchange.mutex);
    return m_exchange.isStopping;
}

void BrokerWorker::waitFor(Milliseconds time) const
{
    const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    while (!isStopping() && !clock.hasExpired(time.count())) {
        pollfd wait{m_exchange.event, POLLIN, 0};
        ::poll(&wait, 1, int(std::max<qint64>(1, time.count() - clock.elapsed())));
        eventfd_t count = 0;
        ::eventfd_read(m_exchange.event, &count);
    }
}

/// The events of the broker's socket.
int BrokerWorker::poll(const BrokerConnection& connection, Milliseconds time) const
{
    const short wanted = connection.wantsToWrite() ? POLLIN | POLLOUT : POLLIN;
    pollfd waits[] = {{connection.socket(), wanted, 0}, {m_exchange.event, POLLIN, 0}};
    ::poll(waits, 2, int(time.count()));
    eventfd_t count = 0;
    ::eventfd_read(m_exchange.event, &count);
    return waits[0].revents;
}

/// A connection from its begin to its end. How long it was up.
std::chrono::milliseconds BrokerWorker::serve()
{
    m_isUp = false;
    m_asked.invalidate();
    m_opened.start();
    m_heard.start();
    BrokerConnection connection(m_settings, m_mustDiscard || !m_settings.keepsSession,
                                m_exchange.news);
    while (connection.state() != BrokerConnection::State::Over && !isStopping()) {
        turn(connection);
    }
    if (m_isUp && connection.state() == BrokerConnection::State::Up) {
        bidFarewell(connection);
    }
    const Milliseconds lasted(m_isUp ? m_up.elapsed() : 0);
    if (!m_hasDiscarded) {
        end(connection);
    }
    return lasted;
}

void BrokerWorker::turn(BrokerConnection& connection)
{
    if (poll(connection, m_isUp ? Milliseconds(kTick) : Milliseconds(kOpeningTick)) & POLLIN) {
        m_heard.start();
        m_asked.invalidate();
    }
    connection.work();
    if (connection.state() == BrokerConnection::State::Opening &&
        m_opened.hasExpired(Milliseconds(kMaxOpening).count())) {
        connection.fail("the broker does not answer");
    }
    if (connection.state() == BrokerConnection::State::Up) {
        if (m_mustDiscard) {
            discardSession(connection);
            return;
        }
        if (!m_isUp) {
            begin(connection);
        }
        takeRequests(connection);
        watch(connection);
    }
    if (const qint64 count = connection.takeOversized()) {
        const std::lock_guard lock(m_exchange.mutex);
        m_exchange.losses.oversized += count;
    }
    wakeReader();
}

/// A broker that is silent for half the time is asked, and one that does not answer counts as away.
void BrokerWorker::watch(BrokerConnection& connection)
{
    const qint64 max = m_settings.maxSilence.count();
    if (!m_asked.isValid()) {
        if (m_heard.hasExpired(max / 2)) {
            connection.askForAnswer();
            m_asked.start();
        }
    } else if (m_heard.hasExpired(max) && m_asked.hasExpired(max / 2)) {
        connection.fail(QString("the broker has been silent for %1 s").arg(double(max) / 1000));
    }
}

void BrokerWorker::discardSession(BrokerConnection& connection)
{
    connection.close();
    connection.work();
    connection.fail({});
    m_mustDiscard = false;
    m_hasDiscarded = true;
    m_hasSession = false;
}

void BrokerWorker::begin(BrokerConnection& connection)
{
    if (m_hasSession && !connection.hasFoundSession()) {
        tell(News::Error, "the broker has not kept what came while the connection was broken");
    }
    m_isUp = true;
    m_hasSession = m_settings.keepsSession;
    m_up.start();
    say(connection, "online");
    const std::lock_guard lock(m_exchange.mutex);
    m_exchange.isUp = true;
    m_exchange.hasNewFilters = true;
    News news;
    news.kind = News::Connected;
    m_exchange.news.push(std::move(news));
}

void BrokerWorker::end(const BrokerConnection& connection)
{
    // In the same session the broker would take the next one of that number for the other half.
    const bool breaksSession = m_hasSession && connection.hasHalfPublications();
    m_mustDiscard = m_mustDiscard || breaksSession;
    {
        const std::lock_guard lock(m_exchange.mutex);
        m_exchange.isUp = false;
        m_exchange.losses.unconfirmed +=
            qint64(m_exchange.outbox.clear()) + connection.unconfirmedCount();
    }
    tell(News::Disconnected);
    if (breaksSession) {
        tell(News::Error, "what comes while the connection is broken is lost: a write with QoS 2 "
                          "was half done");
    }
    if (!connection.error().isEmpty()) {
        tell(News::Error, QString("%1: %2").arg(m_settings.address(), connection.error()));
    }
}

void BrokerWorker::takeRequests(BrokerConnection& connection)
{
    if (const auto filters = takeFilters()) {
        connection.subscribe(*filters);
    }
    while (!connection.wantsToWrite() && connection.unconfirmedCount() < kMaxUnconfirmed) {
        const auto next = takePublication();
        if (!next) {
            return;
        }
        if (!connection.publish(*next)) {
            const std::lock_guard lock(m_exchange.mutex);
            ++m_exchange.losses.refused;
        }
    }
}

/// Nothing where they are the same as before.
std::optional<QVector<TopicFilter>> BrokerWorker::takeFilters()
{
    const std::lock_guard lock(m_exchange.mutex);
    return std::exchange(m_exchange.hasNewFilters, false) ? std::optional(m_exchange.filters)
                                                          : std::nullopt;
}

std::optional<Publication> BrokerWorker::takePublication()
{
    const std::lock_guard lock(m_exchange.mutex);
    return m_exchange.outbox.takeFirst();
}

void BrokerWorker::say(BrokerConnection& connection, const char* status) const
{
    if (!m_settings.statusTopic.isEmpty()) {
        connection.publish({m_settings.statusTopic, status, 1, true});
    }
}

/// Sends what it has been given until the broker has it all, or the time for the farewell is over.
void BrokerWorker::flush(BrokerConnection& connection, const QElapsedTimer& clock)
{
    while (true) {
        takeRequests(connection);
        const bool isBusy = connection.state() == BrokerConnection::State::Up &&
                            (connection.wantsToWrite() || connection.unconfirmedCount() > 0);
        if (!isBusy || clock.hasExpired(Milliseconds(kFarewell).count())) {
            return;
        }
        poll(connection, kOpeningTick);
        connection.work();
    }
}

/// Sends the rest, says last of all that it goes, and ends the connection in order.
void BrokerWorker::bidFarewell(BrokerConnection& connection)
{
    QElapsedTimer clock;
    clock.start();
    flush(connection, clock);
    say(connection, "offline");
    flush(connection, clock);
    if (connection.state() == BrokerConnection::State::Up) {
        connection.close();
        connection.work();
    }
}

void BrokerWorker::tell(News::Kind kind, const QString& text)
{
    News news;
    news.kind = kind;
    news.text = text;
    m_exchange.news.push(std::move(news));
    wakeReader();
}

void BrokerWorker::wakeReader()
{
    const std::lock_guard lock(m_exchange.mutex);
    if (m_exchange.isReaderAsleep && m_exchange.wake && !m_exchange.news.isEmpty()) {
        m_exchange.isReaderAsleep = false;
        m_exchange.wake();
    }
}

} // namespace norvo
