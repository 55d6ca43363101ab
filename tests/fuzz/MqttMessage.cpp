// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzInput.h"
#include "Harness.h"
#include "PortLine.h"
#include "plugins/mqtt/TopicPort.h"

using norvo::require;

/// First line: what stands behind an output's name; then a message of its topic.
NORVO_HARNESS(MqttMessage)
{
    norvo::FuzzInput parts(input);
    const PortDefinition definition = norvo::portDefinitionOf(parts.line());
    norvo::TopicPort sink;
    if (sink.defineInput(definition).isEmpty()) {
        require(norvo::topicError(sink.topic()).isEmpty(), "an input's topic can be published to");
    }
    norvo::TopicPort output;
    if (!output.defineOutput(definition).isEmpty()) {
        return;
    }
    require(!output.topic().isEmpty(), "an output has a topic");
    require(output.qos() >= 0 && output.qos() <= 2, "a quality of service is 0 to 2");
    const auto json = output.path() ? norvo::readJson(parts.rest()) : std::nullopt;
    if (json) {
        norvo::variantOf(output.path()->valueIn(*json));
    }
}
