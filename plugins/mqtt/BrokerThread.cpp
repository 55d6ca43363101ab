// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/BrokerThread.h"

#include "plugins/mqtt/BrokerWorker.h"

#include <chrono>
#include <csignal>
#include <mutex>
#include <utility>

#include <mosquitto.h>

namespace norvo {

namespace {

using namespace std::chrono_literals;

constexpr auto kEnd = 1s;

} // namespace

BrokerThread::BrokerThread(const BrokerSettings& settings, std::function<void()> wake)
    : m_exchange(std::make_shared<BrokerExchange>(std::move(wake)))
{
    // Signals are the main thread's; one for a broken pipe would end the program.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::thread([settings, exchange = m_exchange] {
        mosquitto_lib_init();
        BrokerWorker(settings, *exchange).run();
        mosquitto_lib_cleanup();
        const std::lock_guard lock(exchange->mutex);
        exchange->hasEnded = true;
        exchange->ended.notify_all();
    });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

BrokerThread::~BrokerThread()
{
    stop();
    bool hasEnded = false;
    {
        std::unique_lock lock(m_exchange->mutex);
        m_exchange->wake = nullptr;
        hasEnded = m_exchange->ended.wait_for(lock, kEnd, [this] { return m_exchange->hasEnded; });
    }
    // Only a name server that does not answer holds it up; it ends when that has given up.
    hasEnded ? m_thread.join() : m_thread.detach();
}

BrokerThread::Answer BrokerThread::publish(Publication what)
{
    const std::lock_guard lock(m_exchange->mutex);
    if (!m_exchange->isUp || m_exchange->isStopping) {
        return Answer::NotConnected;
    }
    if (!m_exchange->outbox.push(std::move(what))) {
        return Answer::Full;
    }
    m_exchange->notify();
    return Answer::Taken;
}

void BrokerThread::subscribe(QVector<TopicFilter> filters)
{
    const std::lock_guard lock(m_exchange->mutex);
    m_exchange->filters = std::move(filters);
    m_exchange->hasNewFilters = true;
    m_exchange->notify();
}

void BrokerThread::stop()
{
    const std::lock_guard lock(m_exchange->mutex);
    m_exchange->isStopping = true;
    m_exchange->notify();
}

NewsQueue& BrokerThread::news()
{
    return m_exchange->news;
}

bool BrokerThread::resume()
{
    const std::lock_guard lock(m_exchange->mutex);
    m_exchange->isReaderAsleep = m_exchange->news.isEmpty();
    return m_exchange->isReaderAsleep;
}

BrokerLosses BrokerThread::takeLosses()
{
    const std::lock_guard lock(m_exchange->mutex);
    return std::exchange(m_exchange->losses, {});
}

} // namespace norvo
