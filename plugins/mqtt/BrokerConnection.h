// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/mqtt/BrokerSettings.h"
#include "plugins/mqtt/NewsQueue.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QVector>

#include <memory>

struct mosquitto;
struct mosquitto_message;
typedef struct mqtt5__property mosquitto_property;

namespace norvo {

/// A filter of topics that is subscribed to.
struct TopicFilter
{
    QByteArray text;
    int qos = 0;
    int number = 0; ///< Above 0.

    bool operator==(const TopicFilter& other) const
    {
        return text == other.text && qos == other.qos && number == other.number;
    }
};

/// A message to the broker.
struct Publication
{
    QByteArray topic;
    QByteArray payload;
    int qos = 0;
    bool isRetained = false;
};

/// One connection to a broker, from its opening to its end; of one thread.
///
/// Nothing outlives it: what it still had to send is thrown away with it, also what the system has
/// not sent yet, unless it was closed in order.
class BrokerConnection
{
public:
    enum class State { Opening, Up, Over };

    /// `news` gets messages and errors that do not end the connection. Looks the host's name up,
    /// which may take long.
    BrokerConnection(const BrokerSettings& settings, bool startsClean, NewsQueue& news);
    ~BrokerConnection();
    BrokerConnection(const BrokerConnection&) = delete;
    BrokerConnection& operator=(const BrokerConnection&) = delete;

    State state() const { return m_state; }
    const QString& error() const { return m_error; }           ///< Why it is over.
    bool hasFoundSession() const { return m_hasFoundSession; } ///< Kept by the broker, once up.
    int socket() const;
    bool wantsToWrite() const;
    int unconfirmedCount() const { return m_unconfirmed.size(); } ///< Publications; not with QoS 0.
    /// Whether the broker may hold half a publication with QoS 2.
    bool hasHalfPublications() const;
    qint64 takeOversized(); ///< Messages that were too long, since the last call.

    void work();                           ///< Reads and writes what it can without waiting.
    bool publish(const Publication& what); ///< False: it is not one that this broker takes.
    void subscribe(const QVector<TopicFilter>& filters); ///< To these, and to no others.
    void askForAnswer(); ///< Asks for something of no consequence that the broker has to answer.
    void fail(const QString& error);
    void close(); ///< Ends it in order; call work() afterwards.

private:
    struct Callbacks;
    struct Free
    {
        void operator()(mosquitto* handle) const;
    };

    void prepare();
    QString prepareEncryption();
    void open();
    void failWith(int code, int errorNumber);
    void setLinger(bool aborts);
    void onConnected(int reason, int flags, const mosquitto_property* properties);
    void onDisconnected(int reason);
    void onMessage(const mosquitto_message& message, const mosquitto_property* properties);
    void onPublished(int id, int reason);
    void onSubscribed(int id, int granted);
    void reportError(const QString& text);

    const BrokerSettings m_settings;
    NewsQueue& m_news;
    std::unique_ptr<mosquitto, Free> m_handle;
    State m_state = State::Opening;
    QString m_error;
    QString m_lastLog; ///< The library's last error, in its words.
    bool m_hasFoundSession = false;
    bool m_canNumberFilters = true;
    QVector<TopicFilter> m_filters;
    QHash<int, QByteArray> m_subscribing;  ///< Topics by the number of the request.
    QHash<int, Publication> m_unconfirmed; ///< The same, without payloads.
    QSet<QByteArray> m_refused;            ///< Topics whose refusal has been reported.
    qint64 m_oversized = 0;
};

} // namespace norvo
