// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/BrokerThread.h"

#include "plugins/common/RetryDelay.h"
#include "plugins/mqtt/Outbox.h"

#include <QElapsedTimer>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <optional>
#include <utility>

#include <mosquitto.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::milliseconds;

constexpr int kMaxUnconfirmed = 20; ///< At a time; what comes after them waits in the outbox.
constexpr auto kMaxOpening = 5s;
constexpr auto kMaxDelay = 10s;
constexpr auto kFarewell = 500ms;
constexpr auto kEnd = 1s;
constexpr auto kTick = 100ms;
constexpr auto kOpeningTick = 20ms;

} // namespace

/// What both threads use. The mutex guards all but the news and the event.
struct BrokerThread::Shared
{
    explicit Shared(std::function<void()> wakeReader) : wake(std::move(wakeReader)) {}
    ~Shared() { ::close(event); }

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
    Losses losses;
};

/// Lives in the thread.
class BrokerThread::Worker
{
public:
    Worker(const BrokerSettings& settings, Shared& shared) : m_settings(settings), m_shared(shared)
    {}

    void run()
    {
        RetryDelay delay(kMaxDelay);
        while (!isStopping()) {
            const Milliseconds lasted = serve();
            if (!std::exchange(m_hasDiscarded, false)) {
                waitFor(delay.nextJittered(lasted));
            }
        }
    }

private:
    bool isStopping() const
    {
        const std::lock_guard lock(m_shared.mutex);
        return m_shared.isStopping;
    }
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
    Shared& m_shared;
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

void BrokerThread::Worker::waitFor(Milliseconds time) const
{
    const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    while (!isStopping() && !clock.hasExpired(time.count())) {
        pollfd wait{m_shared.event, POLLIN, 0};
        ::poll(&wait, 1, int(std::max<qint64>(1, time.count() - clock.elapsed())));
        eventfd_t count = 0;
        ::eventfd_read(m_shared.event, &count);
    }
}

/// The events of the broker's socket.
int BrokerThread::Worker::poll(const BrokerConnection& connection, Milliseconds time) const
{
    const short wanted = connection.wantsToWrite() ? POLLIN | POLLOUT : POLLIN;
    pollfd waits[] = {{connection.socket(), wanted, 0}, {m_shared.event, POLLIN, 0}};
    ::poll(waits, 2, int(time.count()));
    eventfd_t count = 0;
    ::eventfd_read(m_shared.event, &count);
    return waits[0].revents;
}

/// A connection from its begin to its end. How long it was up.
Milliseconds BrokerThread::Worker::serve()
{
    m_isUp = false;
    m_asked.invalidate();
    m_opened.start();
    m_heard.start();
    BrokerConnection connection(m_settings, m_mustDiscard || !m_settings.keepsSession,
                                m_shared.news);
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

void BrokerThread::Worker::turn(BrokerConnection& connection)
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
        const std::lock_guard lock(m_shared.mutex);
        m_shared.losses.oversized += count;
    }
    wakeReader();
}

/// A broker that is silent for half the time is asked, and one that does not answer counts as away.
void BrokerThread::Worker::watch(BrokerConnection& connection)
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

void BrokerThread::Worker::discardSession(BrokerConnection& connection)
{
    connection.close();
    connection.work();
    connection.fail({});
    m_mustDiscard = false;
    m_hasDiscarded = true;
    m_hasSession = false;
}

void BrokerThread::Worker::begin(BrokerConnection& connection)
{
    if (m_hasSession && !connection.hasFoundSession()) {
        tell(News::Error, "the broker has not kept what came while the connection was broken");
    }
    m_isUp = true;
    m_hasSession = m_settings.keepsSession;
    m_up.start();
    say(connection, "online");
    const std::lock_guard lock(m_shared.mutex);
    m_shared.isUp = true;
    m_shared.hasNewFilters = true;
    News news;
    news.kind = News::Connected;
    m_shared.news.push(std::move(news));
}

void BrokerThread::Worker::end(const BrokerConnection& connection)
{
    // In the same session the broker would take the next one of that number for the other half.
    const bool breaksSession = m_hasSession && connection.hasHalfPublications();
    m_mustDiscard = m_mustDiscard || breaksSession;
    {
        const std::lock_guard lock(m_shared.mutex);
        m_shared.isUp = false;
        m_shared.losses.unconfirmed +=
            qint64(m_shared.outbox.clear()) + connection.unconfirmedCount();
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

void BrokerThread::Worker::takeRequests(BrokerConnection& connection)
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
            const std::lock_guard lock(m_shared.mutex);
            ++m_shared.losses.refused;
        }
    }
}

/// Nothing where they are the same as before.
std::optional<QVector<TopicFilter>> BrokerThread::Worker::takeFilters()
{
    const std::lock_guard lock(m_shared.mutex);
    return std::exchange(m_shared.hasNewFilters, false) ? std::optional(m_shared.filters)
                                                        : std::nullopt;
}

std::optional<Publication> BrokerThread::Worker::takePublication()
{
    const std::lock_guard lock(m_shared.mutex);
    return m_shared.outbox.takeFirst();
}

void BrokerThread::Worker::say(BrokerConnection& connection, const char* status) const
{
    if (!m_settings.statusTopic.isEmpty()) {
        connection.publish({m_settings.statusTopic, status, 1, true});
    }
}

/// Sends what it has been given until the broker has it all, or the time for the farewell is over.
void BrokerThread::Worker::flush(BrokerConnection& connection, const QElapsedTimer& clock)
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
void BrokerThread::Worker::bidFarewell(BrokerConnection& connection)
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

void BrokerThread::Worker::tell(News::Kind kind, const QString& text)
{
    News news;
    news.kind = kind;
    news.text = text;
    m_shared.news.push(std::move(news));
    wakeReader();
}

void BrokerThread::Worker::wakeReader()
{
    const std::lock_guard lock(m_shared.mutex);
    if (m_shared.isReaderAsleep && m_shared.wake && !m_shared.news.isEmpty()) {
        m_shared.isReaderAsleep = false;
        m_shared.wake();
    }
}

BrokerThread::BrokerThread(const BrokerSettings& settings, std::function<void()> wake)
    : m_shared(std::make_shared<Shared>(std::move(wake)))
{
    // Signals are the main thread's; one for a broken pipe would end the program.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([settings, shared = m_shared] {
        mosquitto_lib_init();
        Worker(settings, *shared).run();
        mosquitto_lib_cleanup();
        const std::lock_guard lock(shared->mutex);
        shared->hasEnded = true;
        shared->ended.notify_all();
    });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

BrokerThread::~BrokerThread()
{
    stop();
    bool hasEnded = false;
    {
        std::unique_lock lock(m_shared->mutex);
        m_shared->wake = nullptr;
        hasEnded = m_shared->ended.wait_for(lock, kEnd, [this] { return m_shared->hasEnded; });
    }
    // Only a name server that does not answer holds it up; it ends when that has given up.
    hasEnded ? m_thread.join() : m_thread.detach();
}

BrokerThread::Answer BrokerThread::publish(Publication what)
{
    const std::lock_guard lock(m_shared->mutex);
    if (!m_shared->isUp || m_shared->isStopping) {
        return Answer::NotConnected;
    }
    if (!m_shared->outbox.push(std::move(what))) {
        return Answer::Full;
    }
    m_shared->notify();
    return Answer::Taken;
}

void BrokerThread::subscribe(QVector<TopicFilter> filters)
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->filters = std::move(filters);
    m_shared->hasNewFilters = true;
    m_shared->notify();
}

void BrokerThread::stop()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->isStopping = true;
    m_shared->notify();
}

NewsQueue& BrokerThread::news()
{
    return m_shared->news;
}

bool BrokerThread::resume()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->isReaderAsleep = m_shared->news.isEmpty();
    return m_shared->isReaderAsleep;
}

BrokerThread::Losses BrokerThread::takeLosses()
{
    const std::lock_guard lock(m_shared->mutex);
    return std::exchange(m_shared->losses, {});
}

} // namespace norvo
