// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/JsonPath.h"
#include "FuzzInput.h"
#include "Harness.h"

using norvo::require;

/// First line: a path; then a JSON text. What is put at a place is found there, and what is written
/// reads as it was.
NORVO_HARNESS(JsonPath)
{
    norvo::FuzzInput parts(input);
    norvo::JsonPath path;
    const bool isPath = path.define(QString::fromUtf8(parts.line())).isEmpty();
    const auto json = norvo::readJson(parts.rest());
    if (!json) {
        return;
    }
    const auto again = norvo::readJson(norvo::writeJson(*json));
    require(again && *again == *json, "what is written reads as it was");
    norvo::variantOf(*json);
    if (isPath) {
        norvo::variantOf(path.valueIn(*json));
        const QJsonValue placed = path.placed(true, *json);
        require(path.valueIn(placed) == QJsonValue(true), "what is put at a place is found there");
    }
}
