// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <QStringList>
#include <QtTest>

#include <atomic>

#include <mosquitto.h>

/// Somebody else at the broker, with the library's own thread. It connects again by itself.
class Peer
{
public:
    explicit Peer(int port) : m_handle(mosquitto_new(nullptr, true, this))
    {
        mosquitto_max_inflight_messages_set(m_handle, 0);
        mosquitto_connect_callback_set(m_handle, [](mosquitto* handle, void* object, int) {
            auto& peer = *static_cast<Peer*>(object);
            if (!peer.m_filter.isEmpty()) {
                mosquitto_subscribe(handle, nullptr, peer.m_filter.constData(), 2);
            }
            peer.m_isUp = true;
        });
        mosquitto_subscribe_callback_set(m_handle,
                                         [](mosquitto*, void* object, int, int, const int*) {
                                             static_cast<Peer*>(object)->m_isSubscribed = true;
                                         });
        mosquitto_publish_callback_set(m_handle, [](mosquitto*, void* object, int) {
            ++static_cast<Peer*>(object)->m_accepted;
        });
        mosquitto_message_callback_set(
            m_handle, [](mosquitto*, void* object, const mosquitto_message* message) {
                static_cast<Peer*>(object)->note(*message);
            });
        mosquitto_reconnect_delay_set(m_handle, 1, 1, false);
        mosquitto_connect_async(m_handle, "127.0.0.1", port, 60);
        mosquitto_loop_start(m_handle);
    }
    ~Peer()
    {
        mosquitto_disconnect(m_handle);
        mosquitto_loop_stop(m_handle, true);
        mosquitto_destroy(m_handle);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    void waitUntilUp() { QTRY_VERIFY_WITH_TIMEOUT(m_isUp, 30000); }
    void subscribe(const QByteArray& filter)
    {
        waitUntilUp();
        m_filter = filter;
        mosquitto_subscribe(m_handle, nullptr, filter.constData(), 2);
        QTRY_VERIFY_WITH_TIMEOUT(m_isSubscribed, 30000);
    }
    void publish(const QByteArray& topic, const QByteArray& payload, int qos = 0,
                 bool isRetained = false)
    {
        mosquitto_publish(m_handle, nullptr, topic.constData(), payload.size(), payload.constData(),
                          qos, isRetained);
    }

    int accepted() const { return m_accepted; } ///< How many the broker has taken.
    QStringList notes() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_notes;
    }

private:
    void note(const mosquitto_message& message)
    {
        const QMutexLocker lock(&m_mutex);
        m_notes.append(
            QString("%1 %2 qos%3%4")
                .arg(message.topic, QString::fromUtf8(static_cast<const char*>(message.payload),
                                                      message.payloadlen))
                .arg(message.qos)
                .arg(message.retain ? " retained" : ""));
    }

    mosquitto* const m_handle;
    std::atomic<bool> m_isUp{false};
    std::atomic<bool> m_isSubscribed{false};
    std::atomic<int> m_accepted{0};
    QByteArray m_filter;
    mutable QMutex m_mutex;
    QStringList m_notes;
};
