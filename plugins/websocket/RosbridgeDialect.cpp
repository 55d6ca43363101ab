// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/RosbridgeDialect.h"

#include "plugins/common/Duration.h"

#include <QRegularExpression>

#include <algorithm>
#include <chrono>

namespace norvo {

namespace {

const QString kOp = QStringLiteral("op");
const QString kTopic = QStringLiteral("topic");
const QString kMessage = QStringLiteral("msg");

QString textOf(const QJsonObject& object)
{
    return QString::fromUtf8(writeJson(object));
}

QString about(const char* operation, const QString& topic)
{
    return textOf({{kOp, operation}, {"id", "norvo:" + topic}, {kTopic, topic}});
}

QString readThrottle(const PortDefinition& definition, int& milliseconds)
{
    if (!definition.options.contains("throttle")) {
        return {};
    }
    const QString text = definition.options.value("throttle");
    const auto time = readDuration(text);
    milliseconds = int(time.value_or(std::chrono::milliseconds(0)).count());
    return time ? QString()
                : QString("option \"throttle\": \"%1\" is not a time; write one such as 500 ms, "
                          "5 s or 2 min")
                      .arg(text);
}

} // namespace

QString RosbridgeDialect::define(const PortDefinition& definition, bool isInput, Port& port)
{
    static const QRegularExpression form(
        R"x(^\s*([/~\w]+)(?:\s+(\w+(?:/\w+){1,2}))?(?:\s+(\$.*?))?\s*$)x");

    const auto match = form.match(definition.text);
    port.topic = match.captured(1);
    port.type = match.captured(2);
    const QString path = match.captured(3);
    if (port.topic.isEmpty() || (isInput && (port.type.isEmpty() || path.size() < 2))) {
        return QString("\"%1\" is not a topic, %2; write such as "
                       "/cmd_vel geometry_msgs/Twist $.linear.x")
            .arg(definition.text,
                 isInput ? "its type and a JSON path to a field" : "its type and a JSON path");
    }
    const QString type = m_types.value(port.topic, port.type);
    if (!port.type.isEmpty() && type != port.type) {
        return QString("topic \"%1\" has the type %2 already").arg(port.topic, type);
    }
    return port.path.define(path.isEmpty() ? "$" : path);
}

QString RosbridgeDialect::defineOutput(const PortDefinition& definition)
{
    Port port;
    QString error = define(definition, false, port);
    error = error.isEmpty() ? readThrottle(definition, port.throttleMs) : error;
    if (error.isEmpty()) {
        m_readers[port.topic].push_back(int(m_outputs.size()));
        m_outputs.push_back(port);
        if (!port.type.isEmpty()) {
            m_types.insert(port.topic, port.type);
        }
    }
    return error;
}

QString RosbridgeDialect::defineInput(const PortDefinition& definition)
{
    Port port;
    QString error = define(definition, true, port);
    if (error.isEmpty()) {
        m_inputs.push_back(port);
        m_types.insert(port.topic, port.type);
    }
    return error;
}

QStringList RosbridgeDialect::opening()
{
    m_written.clear();
    m_subscribed.clear();
    QStringList messages;
    for (const Port& input : m_inputs) {
        messages << textOf({{kOp, "advertise"},
                            {"id", "norvo:" + input.topic},
                            {kTopic, input.topic},
                            {"type", input.type}});
    }
    messages.removeDuplicates();
    return messages;
}

QStringList RosbridgeDialect::requests(const IsHeard& isHeard)
{
    Throttles wanted;
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        const Port& output = m_outputs[i];
        if (isHeard(int(i))) {
            wanted[output.topic] =
                std::min(wanted.value(output.topic, output.throttleMs), output.throttleMs);
        }
    }
    QStringList messages;
    for (auto old = m_subscribed.cbegin(); old != m_subscribed.cend(); ++old) {
        if (wanted.value(old.key(), -1) != old.value()) {
            messages << about("unsubscribe", old.key());
        }
    }
    for (auto next = wanted.cbegin(); next != wanted.cend(); ++next) {
        if (m_subscribed.value(next.key(), -1) != next.value()) {
            messages << subscription(next.key(), next.value());
        }
    }
    m_subscribed = wanted;
    return messages;
}

/// With a queue of 1 the last value before a pause arrives, if late; without one it would be lost.
QString RosbridgeDialect::subscription(const QString& topic, int throttleMs) const
{
    QJsonObject message{{kOp, "subscribe"}, {"id", "norvo:" + topic}, {kTopic, topic}};
    if (m_types.contains(topic)) {
        message.insert("type", m_types.value(topic));
    }
    if (throttleMs > 0) {
        message.insert("throttle_rate", throttleMs);
        message.insert("queue_length", 1);
    }
    return textOf(message);
}

QStringList RosbridgeDialect::closing()
{
    QStringList messages;
    for (const QString& topic : m_subscribed.keys()) {
        messages << about("unsubscribe", topic);
    }
    for (const Port& input : m_inputs) {
        messages << about("unadvertise", input.topic);
    }
    messages.removeDuplicates();
    return messages;
}

bool RosbridgeDialect::read(const QJsonValue& message, const IsHeard& isHeard,
                            std::vector<Value>& values, QString& error)
{
    const QString operation = message[kOp].toString();
    if (operation == "status") {
        const bool isError = message["level"].toString() == "error";
        error = isError ? "rosbridge: " + message[kMessage].toString() : QString();
        return true;
    }
    bool isMatched = false;
    if (operation == "publish") {
        const QJsonValue content = message[kMessage];
        for (const int output : m_readers.value(message[kTopic].toString())) {
            const QVariant value = variantOf(m_outputs[std::size_t(output)].path.valueIn(content));
            isMatched |= value.isValid();
            if (value.isValid() && isHeard(output)) {
                values.push_back({output, value});
            }
        }
    }
    return isMatched;
}

QString RosbridgeDialect::write(int input, const QJsonValue& value, const QString&)
{
    const Port& port = m_inputs[std::size_t(input)];
    QJsonValue& content = m_written[port.topic];
    content = port.path.placed(value, content);
    return textOf({{kOp, "publish"},
                   {"id", "norvo:" + port.topic},
                   {kTopic, port.topic},
                   {kMessage, content}});
}

} // namespace norvo
