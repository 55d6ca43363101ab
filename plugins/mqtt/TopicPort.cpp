// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/TopicPort.h"

#include "plugins/common/Duration.h"
#include "plugins/common/LineFormat.h"

#include <QRegularExpression>

#include <mosquitto.h>

namespace norvo {

namespace {

constexpr int kMaxTopicLength = 65535; ///< In bytes; the protocol has no longer ones.

} // namespace

QString topicError(const QByteArray& topic)
{
    if (topic.isEmpty() || topic.size() > kMaxTopicLength || topic.contains('\0')) {
        return topic.isEmpty()
                   ? QString("the topic is empty")
                   : QString("a topic has %1 bytes at most, and no zero byte").arg(kMaxTopicLength);
    }
    return mosquitto_pub_topic_check(topic.constData()) == MOSQ_ERR_SUCCESS
               ? QString()
               : QString("\"%1\" is written to, so it has no wildcards + and #")
                     .arg(QString::fromUtf8(topic));
}

QString TopicPort::defineOutput(const PortDefinition& definition)
{
    QString error = readText(definition.text, false);
    if (error.isEmpty() && mosquitto_sub_topic_check(m_topic.constData()) != MOSQ_ERR_SUCCESS) {
        error = QString("\"%1\" is not a topic: + stands for one level and # at the end for all "
                        "that follow, such as plant/+/speed or plant/#")
                    .arg(QString::fromUtf8(m_topic));
    }
    if (error.isEmpty()) {
        error = readQos(definition);
    }
    const QString stale = definition.options.value("stale");
    if (error.isEmpty() && definition.options.contains("stale")) {
        const auto time = readDuration(stale);
        m_staleAfter = time.value_or(std::chrono::milliseconds(0));
        error = time ? QString()
                     : QString("option \"stale\": \"%1\" is not a time; write one such as 500 ms, "
                               "5 s or 2 min")
                           .arg(stale);
    }
    return error;
}

QString TopicPort::defineInput(const PortDefinition& definition)
{
    QString error = readText(definition.text, true);
    if (error.isEmpty()) {
        error = topicError(m_topic);
    }
    if (error.isEmpty()) {
        error = readQos(definition);
    }
    if (error.isEmpty() && definition.options.contains("retain")) {
        error = readOption(definition, "retain", "false", "true", m_isRetained);
    }
    return error;
}

QString TopicPort::readText(const QString& text, bool isInput)
{
    static const QRegularExpression topic(R"x(^\s*(?:"([^"]*)"|([^\s"]\S*))(?=\s|$))x");
    static const QRegularExpression word(R"x(\s+(\$(?:\[[^\]]*\]|\S)*|\S+))x");

    const auto first = topic.match(text);
    m_topic = (first.captured(1) + first.captured(2)).toUtf8();
    if (m_topic.isEmpty() || m_topic.size() > kMaxTopicLength || m_topic.contains('\0')) {
        return m_topic.isEmpty()
                   ? QString("there is no topic; write one, and a JSON path where messages are "
                             "JSON, such as plant/1/speed $.value")
                   : topicError(m_topic);
    }
    QString error;
    for (auto next = word.globalMatch(text.mid(first.capturedEnd()));
         next.hasNext() && error.isEmpty();) {
        error = readWord(next.next().captured(1), isInput);
    }
    return error;
}

QString TopicPort::readWord(const QString& word, bool isInput)
{
    static const QStringList qualities{"qos0", "qos1", "qos2"};

    if (word.startsWith('$') && !m_path) {
        return m_path.emplace().define(word);
    }
    if (qualities.contains(word)) {
        m_qos = qualities.indexOf(word);
    } else if (isInput && word == "retain") {
        m_isRetained = true;
    } else {
        return QString("\"%1\" behind the topic is not one of: %2, qos0, qos1, qos2%3")
            .arg(word, m_path ? "one JSON path" : "a JSON path such as $.value",
                 isInput ? ", retain" : "");
    }
    return {};
}

QString TopicPort::readQos(const PortDefinition& definition)
{
    static const QStringList qualities{"0", "1", "2"};

    if (!definition.options.contains("qos")) {
        return {};
    }
    const QString text = definition.options.value("qos");
    m_qos = qMax(0, qualities.indexOf(text));
    return qualities.contains(text)
               ? QString()
               : QString("option \"qos\": \"%1\" is not one of 0, 1, 2").arg(text);
}

} // namespace norvo
