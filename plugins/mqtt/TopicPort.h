// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "plugins/common/JsonPath.h"
#include "norvo/PortDefinition.h"

#include <QByteArray>

#include <chrono>
#include <optional>

namespace norvo {

/// What stands behind the name of an output or input: a topic, and behind it, in any order, a JSON
/// path and "qos0", "qos1" or "qos2"; behind that of an input also "retain". A topic with spaces in
/// it is quoted.
///
/// Options say the same: "qos", 0 to 2; for an input "retain", "true" or "false". The option
/// "stale" of an output is a time, such as "5 s".
class TopicPort
{
public:
    /// What is wrong with the definition, or an empty text.
    QString defineOutput(const PortDefinition& definition);
    QString defineInput(const PortDefinition& definition);

    const QByteArray& topic() const { return m_topic; } ///< Of an output with wildcards.
    int qos() const { return m_qos; }
    bool isRetained() const { return m_isRetained; }
    const std::optional<JsonPath>& path() const { return m_path; }
    std::chrono::milliseconds staleAfter() const { return m_staleAfter; } ///< 0: never.

private:
    QString readText(const QString& text, bool isInput);
    QString readWord(const QString& word, bool isInput);
    QString readQos(const PortDefinition& definition);

    QByteArray m_topic;
    int m_qos = 0;
    bool m_isRetained = false;
    std::optional<JsonPath> m_path;
    std::chrono::milliseconds m_staleAfter{0};
};

/// What is wrong with a topic to publish to, or an empty text.
QString topicError(const QByteArray& topic);

} // namespace norvo
