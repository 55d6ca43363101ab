// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/BrokerConnection.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <sys/socket.h>

namespace norvo {

namespace {

constexpr int kMinKeepAlive = 5; ///< In seconds, of the library.
constexpr int kMaxPayload = 1024 * 1024;
constexpr unsigned kMaxPacket = 16 * 1024 * 1024; ///< Longer ones the broker does not send.
constexpr unsigned kSessionSeconds = 600;
constexpr int kReadsAtOnce = 64;
constexpr int kFirstRefusal = 128; ///< Of the reasons that an answer gives.

struct FreeProperties
{
    void operator()(mosquitto_property* list) const { mosquitto_property_free_all(&list); }
};
using Properties = std::unique_ptr<mosquitto_property, FreeProperties>;

Properties properties(const QVector<QPair<int, quint32>>& numbers)
{
    mosquitto_property* list = nullptr;
    for (const auto& [name, number] : numbers) {
        name == MQTT_PROP_SUBSCRIPTION_IDENTIFIER
            ? mosquitto_property_add_varint(&list, name, number)
            : mosquitto_property_add_int32(&list, name, number);
    }
    return Properties(list);
}

BrokerConnection& self(void* object)
{
    return *static_cast<BrokerConnection*>(object);
}

/// A key that is locked by a password would make the program ask at its terminal.
int refusePassword(char*, int, int, void*)
{
    return 0;
}

News::Filters filtersOf(const mosquitto_property* list)
{
    News::Filters filters;
    uint32_t number = 0;
    const mosquitto_property* next =
        mosquitto_property_read_varint(list, MQTT_PROP_SUBSCRIPTION_IDENTIFIER, &number, false);
    while (next) {
        filters.append(int(number));
        next =
            mosquitto_property_read_varint(next, MQTT_PROP_SUBSCRIPTION_IDENTIFIER, &number, true);
    }
    return filters;
}

} // namespace

struct BrokerConnection::Callbacks
{
    static void set(mosquitto* handle)
    {
        mosquitto_connect_v5_callback_set(handle, [](mosquitto*, void* object, int reason,
                                                     int flags, const mosquitto_property* list) {
            self(object).onConnected(reason, flags, list);
        });
        mosquitto_disconnect_v5_callback_set(
            handle, [](mosquitto*, void* object, int reason, const mosquitto_property*) {
                self(object).onDisconnected(reason);
            });
        mosquitto_message_v5_callback_set(
            handle, [](mosquitto*, void* object, const mosquitto_message* message,
                       const mosquitto_property* list) { self(object).onMessage(*message, list); });
        mosquitto_publish_v5_callback_set(
            handle, [](mosquitto*, void* object, int id, int reason, const mosquitto_property*) {
                self(object).onPublished(id, reason);
            });
        mosquitto_subscribe_v5_callback_set(handle, [](mosquitto*, void* object, int id, int count,
                                                       const int* granted,
                                                       const mosquitto_property*) {
            self(object).onSubscribed(id, count > 0 ? granted[0] : kFirstRefusal);
        });
        mosquitto_log_callback_set(handle,
                                   [](mosquitto*, void* object, int level, const char* text) {
                                       if (level == MOSQ_LOG_ERR) {
                                           self(object).m_lastLog = QString::fromUtf8(text);
                                       }
                                   });
    }
};

void BrokerConnection::Free::operator()(mosquitto* handle) const
{
    mosquitto_destroy(handle);
}

BrokerConnection::BrokerConnection(const BrokerSettings& settings, bool startsClean,
                                   NewsQueue& news)
    : m_settings(settings), m_news(news)
{
    // Version 3.1.1 has no session that ends by itself.
    m_handle.reset(mosquitto_new(m_settings.clientId.constData(),
                                 startsClean || !m_settings.isVersion5, this));
    if (!m_handle) {
        fail(QString::fromLocal8Bit(std::strerror(errno)));
        return;
    }
    prepare();
    const QString error = m_settings.isEncrypted ? prepareEncryption() : QString();
    error.isEmpty() ? open() : fail(error);
}

BrokerConnection::~BrokerConnection() = default;

void BrokerConnection::prepare()
{
    mosquitto* const handle = m_handle.get();
    Callbacks::set(handle);
    mosquitto_int_option(handle, MOSQ_OPT_PROTOCOL_VERSION,
                         m_settings.isVersion5 ? MQTT_PROTOCOL_V5 : MQTT_PROTOCOL_V311);
    mosquitto_int_option(handle, MOSQ_OPT_TCP_NODELAY, 1);
    if (!m_settings.user.isEmpty()) {
        mosquitto_username_pw_set(handle, m_settings.user.constData(),
                                  m_settings.password.isEmpty() ? nullptr
                                                                : m_settings.password.constData());
    }
    if (!m_settings.statusTopic.isEmpty()) {
        mosquitto_will_set(handle, m_settings.statusTopic.constData(), 7, "offline", 1, true);
    }
    if (m_settings.isVersion5) {
        // The call that waits for the connection is the only one that takes properties. It keeps
        // them and refuses to go on without a host.
        const bool keeps = m_settings.keepsSession;
        const Properties list =
            properties({{MQTT_PROP_SESSION_EXPIRY_INTERVAL, keeps ? kSessionSeconds : 0},
                        {MQTT_PROP_MAXIMUM_PACKET_SIZE, kMaxPacket}});
        mosquitto_connect_bind_v5(handle, nullptr, 0, kMinKeepAlive, nullptr, list.get());
    }
}

QString BrokerConnection::prepareEncryption()
{
    const auto given = [](const QByteArray& name) {
        return name.isEmpty() ? nullptr : name.constData();
    };
    const int result = mosquitto_tls_set(m_handle.get(), given(m_settings.caFile),
                                         m_settings.caFile.isEmpty() ? "/etc/ssl/certs" : nullptr,
                                         given(m_settings.certificateFile),
                                         given(m_settings.keyFile), refusePassword);
    return result == MOSQ_ERR_SUCCESS ? QString() : QString(mosquitto_strerror(result));
}

void BrokerConnection::open()
{
    const auto seconds =
        std::chrono::duration_cast<std::chrono::seconds>(m_settings.maxSilence).count();
    const int keepAlive = std::max(kMinKeepAlive, int(seconds));
    errno = 0;
    const int result = mosquitto_connect_bind_async(m_handle.get(), m_settings.host.constData(),
                                                    m_settings.port, keepAlive, nullptr);
    if (result != MOSQ_ERR_SUCCESS) {
        failWith(result, errno);
    }
}

int BrokerConnection::socket() const
{
    return m_handle ? mosquitto_socket(m_handle.get()) : -1;
}

bool BrokerConnection::wantsToWrite() const
{
    return m_handle && mosquitto_want_write(m_handle.get());
}

bool BrokerConnection::hasHalfPublications() const
{
    return std::any_of(m_unconfirmed.begin(), m_unconfirmed.end(),
                       [](const Publication& publication) { return publication.qos == 2; });
}

qint64 BrokerConnection::takeOversized()
{
    return std::exchange(m_oversized, 0);
}

void BrokerConnection::work()
{
    if (m_state == State::Over) {
        return;
    }
    errno = 0;
    int result = mosquitto_loop(m_handle.get(), 0, 1);
    for (int i = 0;
         i < kReadsAtOnce && m_state == State::Up && result == MOSQ_ERR_SUCCESS && errno != EAGAIN;
         ++i) {
        errno = 0;
        result = mosquitto_loop_read(m_handle.get(), 1);
    }
    if (result != MOSQ_ERR_SUCCESS && m_state != State::Over) {
        failWith(result, errno);
    }
}

bool BrokerConnection::publish(const Publication& what)
{
    int id = 0;
    const int result =
        mosquitto_publish_v5(m_handle.get(), &id, what.topic.constData(), what.payload.size(),
                             what.payload.constData(), what.qos, what.isRetained, nullptr);
    if (result == MOSQ_ERR_SUCCESS && what.qos > 0) {
        m_unconfirmed.insert(id, {what.topic, {}, what.qos, what.isRetained});
    }
    return result == MOSQ_ERR_SUCCESS;
}

void BrokerConnection::subscribe(const QVector<TopicFilter>& filters)
{
    for (const TopicFilter& filter : std::as_const(m_filters)) {
        if (!filters.contains(filter)) {
            mosquitto_unsubscribe(m_handle.get(), nullptr, filter.text.constData());
        }
    }
    for (const TopicFilter& filter : filters) {
        if (m_filters.contains(filter)) {
            continue;
        }
        const bool isNumbered = m_settings.isVersion5 && m_canNumberFilters;
        const Properties number =
            isNumbered ? properties({{MQTT_PROP_SUBSCRIPTION_IDENTIFIER, quint32(filter.number)}})
                       : Properties();
        int id = 0;
        mosquitto_subscribe_v5(m_handle.get(), &id, filter.text.constData(), filter.qos, 0,
                               number.get());
        m_subscribing.insert(id, filter.text);
    }
    m_filters = filters;
}

void BrokerConnection::askForAnswer()
{
    mosquitto_unsubscribe(m_handle.get(), nullptr, "norvo/is/nothing/but/asking");
}

void BrokerConnection::fail(const QString& error)
{
    if (m_state != State::Over) {
        m_state = State::Over;
        m_error = error;
    }
}

void BrokerConnection::close()
{
    setLinger(false);
    const Properties list = properties({{MQTT_PROP_SESSION_EXPIRY_INTERVAL, 0}});
    mosquitto_disconnect_v5(m_handle.get(), 0, m_settings.isVersion5 ? list.get() : nullptr);
}

void BrokerConnection::failWith(int code, int errorNumber)
{
    if (code == MOSQ_ERR_ERRNO) {
        fail(QString::fromLocal8Bit(std::strerror(errorNumber)));
    } else if (code == MOSQ_ERR_KEEPALIVE) {
        fail("the broker does not answer");
    } else if (code == MOSQ_ERR_CONN_LOST) {
        fail("the broker has closed the connection");
    } else if (code == MOSQ_ERR_EAI || code == MOSQ_ERR_LOOKUP) {
        fail("the name of the host is not known");
    } else {
        fail(m_lastLog.isEmpty() ? QString(mosquitto_strerror(code)) : m_lastLog);
    }
}

/// `aborts`: when the socket is closed, what has not left the machine never does.
void BrokerConnection::setLinger(bool aborts)
{
    const linger value{aborts ? 1 : 0, 0};
    ::setsockopt(socket(), SOL_SOCKET, SO_LINGER, &value, sizeof value);
}

void BrokerConnection::onConnected(int reason, int flags, const mosquitto_property* properties)
{
    if (reason != 0) {
        const bool isOldBroker = reason == MQTT_RC_UNSUPPORTED_PROTOCOL_VERSION;
        const char* const text = m_settings.isVersion5 ? mosquitto_reason_string(reason)
                                                       : mosquitto_connack_string(reason);
        fail(isOldBroker ? QString("the broker does not know version 5 of the protocol; set "
                                   "\"version\" to v3.1.1")
                         : QString("the broker refuses the connection: %1").arg(text));
        return;
    }
    uint8_t canNumber = 1;
    mosquitto_property_read_byte(properties, MQTT_PROP_SUBSCRIPTION_ID_AVAILABLE, &canNumber,
                                 false);
    m_canNumberFilters = canNumber != 0;
    m_hasFoundSession = (flags & 1) != 0;
    m_state = State::Up;
    setLinger(true);
}

void BrokerConnection::onDisconnected(int reason)
{
    if (reason >= kFirstRefusal) {
        fail(QString("the broker ends the connection: %1").arg(mosquitto_reason_string(reason)));
    }
}

void BrokerConnection::onMessage(const mosquitto_message& message,
                                 const mosquitto_property* properties)
{
    if (message.payloadlen > kMaxPayload) {
        ++m_oversized;
        return;
    }
    News news;
    news.topic = message.topic;
    news.payload = QByteArray(static_cast<const char*>(message.payload), message.payloadlen);
    news.filters = filtersOf(properties);
    news.isRetained = message.retain;
    m_news.push(std::move(news));
}

void BrokerConnection::onPublished(int id, int reason)
{
    const auto found = m_unconfirmed.constFind(id);
    if (found != m_unconfirmed.constEnd()) {
        if (reason >= kFirstRefusal && !m_refused.contains(found->topic)) {
            m_refused.insert(found->topic);
            reportError(QString("the broker refuses what is written to \"%1\": %2")
                            .arg(QString::fromUtf8(found->topic), mosquitto_reason_string(reason)));
        }
        m_unconfirmed.erase(found);
    }
}

void BrokerConnection::onSubscribed(int id, int granted)
{
    const QByteArray topic = m_subscribing.take(id);
    if (granted >= kFirstRefusal) {
        const char* const text =
            m_settings.isVersion5 ? mosquitto_reason_string(granted) : "no reason given";
        reportError(
            QString("the broker refuses to send \"%1\": %2").arg(QString::fromUtf8(topic), text));
    }
}

void BrokerConnection::reportError(const QString& text)
{
    News news;
    news.kind = News::Error;
    news.text = text;
    m_news.push(std::move(news));
}

} // namespace norvo
