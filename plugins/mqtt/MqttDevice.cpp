// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/MqttDevice.h"

#include "norvo/Categories.h"

#include <QElapsedTimer>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

#include <mosquitto.h>

namespace {

using namespace std::chrono_literals;

constexpr auto kPause = 15ms;       ///< While more waits than a turn can take.
constexpr auto kSteadyPause = 33ms; ///< After a turn of many; each turn has the window painted.
constexpr auto kShortPause = 8ms;   ///< After a turn of few, which have little to paint.
constexpr std::size_t kFew = 8;
constexpr qint64 kTurnNanoseconds = 8000000;
constexpr std::size_t kTakenAtOnce = 128;
constexpr auto kFilterCheck = 1s;
constexpr auto kAgeCheck = 100ms;
constexpr int kMaxPayload = 1024 * 1024;

/// In the order of Loss.
const QStringList kLossTexts{"messages dropped, they came too fast",
                             "messages refused, they are longer than 1 MiB",
                             "messages refused, they are not text in UTF-8",
                             "messages refused, they are not JSON or have no value of the path",
                             "writes refused, the broker is not connected",
                             "writes refused, the broker does not take them fast enough",
                             "writes refused, they are longer than 1 MiB",
                             "writes refused by the broker's limits",
                             "writes that may not have arrived, the connection broke"};

/// The text that the bytes are, or nothing where they are not UTF-8.
std::optional<QString> textOfBytes(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes.constData(), bytes.size()); // Also behind a zero.
    const bool isBroken =
        text.contains(QChar::ReplacementCharacter) && !bytes.contains("\xef\xbf\xbd");
    return isBroken ? std::nullopt : std::optional(text);
}

} // namespace

MqttDevice::MqttDevice() : m_losses(kLossTexts, [this](const QString& text) { alert(text); })
{
    norvo::declareSettings(*this);
    m_losses.setCollector([this] { collectLosses(); });
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    connect(&m_pause, &QTimer::timeout, this, &MqttDevice::turn);
    connect(&m_second, &QTimer::timeout, this, &MqttDevice::updateFilters);
    connect(&m_ageTimer, &QTimer::timeout, this, &MqttDevice::checkAges);
}

MqttDevice::~MqttDevice() = default;

DeviceTypeInfo MqttDevice::typeInfo()
{
    return {"MQTT", "Topics of an MQTT broker as values", {norvo::kCategoryNetwork}};
}

QString MqttDevice::defineOutput(int output, const QString& name, const PortDefinition& definition)
{
    norvo::TopicPort port;
    QString error = unknownOption(definition, {"qos", "stale"});
    error = error.isEmpty() ? port.defineOutput(definition) : error;
    if (!error.isEmpty()) {
        return error;
    }
    const int number = m_numbers.value(port.topic(), m_allFilters.size() + 1);
    if (number > m_allFilters.size()) {
        m_numbers.insert(port.topic(), number);
        m_allFilters.append({port.topic(), 0, number});
        m_readers.emplace_back();
    }
    m_readers[std::size_t(number - 1)].push_back(output);
    m_ages.add(port.staleAfter());
    m_outputs.push_back(std::move(port));
    m_outputNames.push_back(name);
    return {};
}

QString MqttDevice::defineInput(int, const QString&, const PortDefinition& definition)
{
    norvo::TopicPort port;
    QString error = unknownOption(definition, {"qos", "retain"});
    error = error.isEmpty() ? port.defineInput(definition) : error;
    if (error.isEmpty()) {
        m_inputs.push_back(std::move(port));
    }
    return error;
}

bool MqttDevice::initialise()
{
    if (!paramsOk()) {
        return error(paramFaults().join("; "));
    }
    norvo::BrokerSettings settings;
    const QString wrong = norvo::readSettings(*this, settings);
    if (!wrong.isEmpty()) {
        return error(wrong);
    }
    m_settings = settings;
    m_settings.keepsSession = std::any_of(m_outputs.begin(), m_outputs.end(),
                                          [](const auto& port) { return port.qos() > 0; });
    m_lastError.clear();
    return true;
}

void MqttDevice::postInitialisation()
{
    if (!isRunning()) {
        return;
    }
    // Called in the other thread, which stops to call before this object ends.
    m_broker = std::make_unique<norvo::BrokerThread>(m_settings, [this] {
        QMetaObject::invokeMethod(this, &MqttDevice::turn, Qt::QueuedConnection);
    });
    m_filters.clear();
    updateFilters();
    m_second.start(kFilterCheck);
}

void MqttDevice::preShutdown()
{
    m_pause.stop();
    m_second.stop();
    m_ageTimer.stop();
    m_losses.stop();
    if (m_broker) {
        m_broker->stop();
    }
}

void MqttDevice::deinitialise()
{
    preShutdown();
    m_broker.reset();
}

/// Asks the broker for the topics that somebody hears, where that is news.
void MqttDevice::updateFilters()
{
    QVector<norvo::TopicFilter> wanted;
    for (norvo::TopicFilter filter : std::as_const(m_allFilters)) {
        bool isWanted = false;
        for (const int output : m_readers[std::size_t(filter.number - 1)]) {
            if (isHeard(output)) {
                isWanted = true;
                filter.qos = std::max(filter.qos, m_outputs[std::size_t(output)].qos());
            }
        }
        if (isWanted) {
            wanted.append(filter);
        }
    }
    if (wanted != m_filters) {
        m_filters = wanted;
        m_broker->subscribe(std::move(wanted));
    }
}

/// Takes what has come, a bounded part of it; comes back after a pause until there is nothing.
void MqttDevice::turn()
{
    if (m_isInTurn || !isRunning() || m_pause.isActive()) { // A receiver may run an event loop.
        return;
    }
    m_isInTurn = true;
    const QPointer<MqttDevice> self(this);
    QElapsedTimer clock;
    clock.start();
    std::vector<norvo::News> some;
    std::size_t taken = 0;
    do {
        some = m_broker->news().take(kTakenAtOnce);
        taken += some.size();
        for (const norvo::News& news : some) {
            take(news);
            if (!self) {
                return;
            }
            if (!isRunning()) {
                m_isInTurn = false;
                return;
            }
        }
    } while (!some.empty() && clock.nsecsElapsed() < kTurnNanoseconds);
    m_isInTurn = false;
    if (!some.empty()) {
        m_pause.start(kPause);
    } else if (taken > 0 || !m_broker->resume()) {
        m_pause.start(taken > kFew ? kSteadyPause : kShortPause);
    }
    collectLosses();
}

void MqttDevice::take(const norvo::News& news)
{
    switch (news.kind) {
    case norvo::News::Message:
        takeMessage(news);
        break;
    case norvo::News::Connected:
        m_lastError.clear();
        m_ages.restart(std::chrono::steady_clock::now());
        if (m_ages.isNeeded()) {
            m_ageTimer.start(kAgeCheck);
        }
        setConnected(true);
        break;
    case norvo::News::Disconnected:
        m_ageTimer.stop();
        setConnected(false);
        break;
    case norvo::News::Error:
        reportOnce(news.text);
        break;
    }
}

/// What goes wrong at each attempt to connect is not said again and again.
void MqttDevice::reportOnce(const QString& error)
{
    if (std::exchange(m_lastError, error) != error) {
        reportFault(error);
    }
}

void MqttDevice::takeMessage(const norvo::News& news)
{
    const QPointer<MqttDevice> self(this);
    std::optional<QJsonValue> json;
    for (const int output : outputsOf(news)) {
        sendFrom(output, news, json);
        if (!self || !isRunning()) {
            return;
        }
    }
}

/// The outputs of the filters that it came for; where the broker does not say, of all that fit it.
std::vector<int> MqttDevice::outputsOf(const norvo::News& news) const
{
    std::vector<int> found;
    const auto add = [this, &found](int number) {
        const std::vector<int>& readers = m_readers[std::size_t(number - 1)];
        found.insert(found.end(), readers.begin(), readers.end());
    };
    for (const int number : news.filters) {
        if (number >= 1 && number <= m_allFilters.size()) {
            add(number);
        }
    }
    for (int i = 0; i < m_allFilters.size() && news.filters.isEmpty(); ++i) {
        const norvo::TopicFilter& filter = m_allFilters[i];
        bool fits = filter.text == news.topic;
        if (!fits && (filter.text.endsWith('#') || filter.text.contains('+'))) {
            mosquitto_topic_matches_sub(filter.text.constData(), news.topic.constData(), &fits);
        }
        if (fits) {
            add(filter.number);
        }
    }
    return found;
}

void MqttDevice::sendFrom(int output, const norvo::News& news, std::optional<QJsonValue>& json)
{
    const QPointer<MqttDevice> self(this);
    const bool isSent = sendValue(output, news, json);
    if (!self || !isRunning() || !isSent || news.isRetained ||
        !m_ages.hear(output, std::chrono::steady_clock::now())) {
        return;
    }
    if (!m_ages.isAnyOld()) {
        emit stale(false);
    }
    if (self && isRunning()) {
        emit recovered(QString("\"%1\" has got a message").arg(m_outputNames[std::size_t(output)]));
    }
}

/// False where the message has no value for the output. `json`: the message, once it has been read.
bool MqttDevice::sendValue(int output, const norvo::News& news, std::optional<QJsonValue>& json)
{
    const std::optional<norvo::JsonPath>& path = m_outputs[std::size_t(output)].path();
    if (!path) {
        const std::optional<QString> text = textOfBytes(news.payload);
        m_losses.add(UnreadableMessages, text ? 0 : 1);
        if (text) {
            sendText(output, *text);
        }
        return text.has_value();
    }
    if (!json) {
        json = norvo::readJson(news.payload).value_or(QJsonValue(QJsonValue::Undefined));
    }
    const QVariant value = norvo::variantOf(path->valueIn(*json));
    if (value.userType() == QMetaType::Double) {
        sendNumber(output, value.toDouble());
    } else if (value.userType() == QMetaType::Bool) {
        sendBool(output, value.toBool());
    } else if (value.isValid()) {
        sendText(output, value.toString());
    } else {
        m_losses.add(MisfitMessages);
    }
    return value.isValid();
}

void MqttDevice::receive(int input, const QVariant& value)
{
    using Answer = norvo::BrokerThread::Answer;

    const norvo::TopicPort& port = m_inputs[std::size_t(input)];
    const QByteArray payload =
        port.path() ? norvo::writeJson(port.path()->placed(QJsonValue::fromVariant(value)))
                    : textOf(value).toUtf8();
    if (payload.size() > kMaxPayload) {
        m_losses.add(OversizedWrites);
        return;
    }
    const Answer answer =
        m_broker && isConnected()
            ? m_broker->publish({port.topic(), payload, port.qos(), port.isRetained()})
            : Answer::NotConnected;
    if (answer != Answer::Taken) {
        m_losses.add(answer == Answer::Full ? HastyWrites : LateWrites);
    }
}

void MqttDevice::checkAges()
{
    if (!m_broker->news().isEmpty()) {
        return; // What is missing may be among what has not been taken yet.
    }
    const auto now = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        if (m_outputs[i].staleAfter().count() > 0 && !isHeard(int(i))) {
            m_ages.hear(int(i), now); // It is not subscribed to.
        }
    }
    const QPointer<MqttDevice> self(this);
    const bool wasOld = m_ages.isAnyOld();
    const std::vector<int> old = m_ages.findOld(now);
    if (!wasOld && !old.empty()) {
        emit stale(true);
    }
    for (const int output : old) {
        if (!self || !isRunning()) {
            return;
        }
        const auto max = m_outputs[std::size_t(output)].staleAfter();
        reportFault(QString("\"%1\" is stale: no message for %2 s")
                        .arg(m_outputNames[std::size_t(output)])
                        .arg(double(max.count()) / 1000));
    }
}

void MqttDevice::collectLosses()
{
    if (m_broker) {
        const norvo::BrokerLosses losses = m_broker->takeLosses();
        m_losses.add(DroppedMessages, m_broker->news().takeDropped());
        m_losses.add(OversizedMessages, losses.oversized);
        m_losses.add(RefusedWrites, losses.refused);
        m_losses.add(UnconfirmedWrites, losses.unconfirmed);
    }
}
