// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzInput.h"
#include "Harness.h"
#include "PortLine.h"
#include "plugins/websocket/JsonDialect.h"
#include "plugins/websocket/RosbridgeDialect.h"

#include <memory>

using norvo::require;

/// Lines: the dialect, an output, an input, a value for that; then a message of the server. What
/// is taken as an input makes messages that are JSON.
NORVO_HARNESS(WebSocketMessage)
{
    norvo::FuzzInput parts(input);
    std::unique_ptr<norvo::Dialect> dialect;
    if (parts.line() == "rosbridge") {
        dialect = std::make_unique<norvo::RosbridgeDialect>();
    } else {
        dialect = std::make_unique<norvo::JsonDialect>();
    }
    const bool isOutput = dialect->defineOutput(norvo::portDefinitionOf(parts.line())).isEmpty();
    const bool isInput = dialect->defineInput(norvo::portDefinitionOf(parts.line())).isEmpty();
    const QString value = QString::fromUtf8(parts.line());
    const auto isHeard = [](int) { return true; };
    QStringList sent = dialect->opening() + dialect->requests(isHeard) + dialect->closing();
    if (isInput) {
        sent += dialect->write(0, value, value);
        sent += dialect->write(0, 1.5, "1.5");
    }
    for (const QString& message : qAsConst(sent)) {
        require(norvo::readJson(message.toUtf8()).has_value(), "what is sent is JSON");
    }
    const auto message = norvo::readJson(parts.rest());
    if (!message) {
        return;
    }
    std::vector<norvo::Dialect::Value> values;
    QString error;
    dialect->read(*message, isHeard, values, error);
    for (const auto& one : values) {
        require(isOutput && one.output == 0, "a value is of an output that there is");
        const int type = one.value.userType();
        require(type == QMetaType::Double || type == QMetaType::Bool || type == QMetaType::QString,
                "a value is a number, yes or no, or a text");
    }
}
