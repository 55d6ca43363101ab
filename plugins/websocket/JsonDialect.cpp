// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/websocket/JsonDialect.h"

namespace norvo {

QString JsonCondition::define(const QString& definition)
{
    const int equals = definition.indexOf("==");
    m_text = definition.mid(equals + 2).trimmed();
    if (equals < 0 || m_text.isEmpty()) {
        return QString("option \"where\": \"%1\" is not a condition; write such as "
                       "$.type == temperature")
            .arg(definition);
    }
    const bool isQuoted = m_text.startsWith('"');
    bool isNumber = false;
    const double number = m_text.toDouble(&isNumber);
    m_number = isNumber ? std::optional(number) : std::nullopt;
    if (isQuoted) {
        const auto quoted = readJson(m_text.toUtf8());
        if (!quoted || !quoted->isString()) {
            return QString("option \"where\": %1 is not a text in double quotes").arg(m_text);
        }
        m_text = quoted->toString();
    }
    const QString error = m_path.define(definition.left(equals).trimmed());
    return error.isEmpty() ? QString() : "option \"where\": " + error;
}

bool JsonCondition::holdsFor(const QJsonValue& message) const
{
    const QJsonValue value = m_path.valueIn(message);
    if (value.isDouble()) {
        return m_number && value.toDouble() == *m_number;
    }
    const QVariant other = variantOf(value);
    return other.isValid() && other.toString() == m_text;
}

QString JsonDialect::defineOutput(const PortDefinition& definition)
{
    Output output;
    QString error = output.path.define(definition.text.trimmed());
    if (error.isEmpty() && definition.options.contains("where")) {
        error = output.condition.emplace().define(definition.options.value("where"));
    }
    if (error.isEmpty()) {
        m_outputs.push_back(output);
    }
    return error;
}

QString JsonDialect::defineInput(const PortDefinition& definition)
{
    JsonTemplate input;
    QString error = input.define(definition.text);
    if (error.isEmpty()) {
        m_inputs.push_back(input);
    }
    return error;
}

bool JsonDialect::read(const QJsonValue& message, const IsHeard& isHeard,
                       std::vector<Value>& values, QString&)
{
    bool isMatched = false;
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        const Output& output = m_outputs[i];
        const bool heard = isHeard(int(i));
        if ((!heard && isMatched) || (output.condition && !output.condition->holdsFor(message))) {
            continue;
        }
        const QVariant value = variantOf(output.path.valueIn(message));
        isMatched |= value.isValid();
        if (heard && value.isValid()) {
            values.push_back({int(i), value});
        }
    }
    return isMatched;
}

QString JsonDialect::write(int input, const QJsonValue& value, const QString& text)
{
    return m_inputs[std::size_t(input)].filled(value, text);
}

} // namespace norvo
