// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/JsonPath.h"
#include "plugins/websocket/Dialect.h"
#include "plugins/websocket/JsonTemplate.h"

#include <optional>
#include <vector>

namespace norvo {

/// Which messages an output is for: "$.type == temperature", those that have this value there. A
/// number is compared as such; a value in double quotes is a JSON text.
class JsonCondition
{
public:
    QString define(const QString& definition); ///< What is wrong with it, or an empty text.
    bool holdsFor(const QJsonValue& message) const;

private:
    JsonPath m_path;
    QString m_text;
    std::optional<double> m_number; ///< The text as one, where it is one without quotes.
};

/// Messages that are JSON. Outputs: a JSON path, with the option "where", a JsonCondition. Inputs:
/// a JsonTemplate.
class JsonDialect : public Dialect
{
public:
    QStringList outputOptions() const override { return {"where"}; }
    QStringList inputOptions() const override { return {}; }
    QString defineOutput(const PortDefinition& definition) override;
    QString defineInput(const PortDefinition& definition) override;

    bool read(const QJsonValue& message, const IsHeard& isHeard, std::vector<Value>& values,
              QString& error) override;
    QString write(int input, const QJsonValue& value, const QString& text) override;

private:
    struct Output
    {
        JsonPath path;
        std::optional<JsonCondition> condition;
    };

    std::vector<Output> m_outputs;
    std::vector<JsonTemplate> m_inputs;
};

} // namespace norvo
