// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/schema/AlarmSchema.h"

#include "host/panel/file/services/Duration.h"

#include <QJsonArray>
#include <QJsonObject>

namespace norvo {

namespace {

const QJsonArray kScalar{"string", "number", "integer", "boolean"};

QJsonObject matching(const QString& pattern, const QString& placeholder, const QString& description)
{
    return {{"type", QJsonArray{"string", "number", "integer"}},
            {"pattern", pattern + '|' + placeholder},
            {"description", description}};
}

QJsonObject limit(const QString& key)
{
    return {{"required", QJsonArray{key}}};
}

QJsonObject keysOf(const QString& placeholder)
{
    const QString number = "^\\s*[-+]?[0-9.]+([eE][-+]?[0-9]+)?\\s*$";
    const QString yesNo =
        "^(?:[Tt]rue|TRUE|[Yy]es|YES|[Oo]n|ON|[Ff]alse|FALSE|[Nn]o|NO|[Oo]ff|OFF)$";
    const auto yesOrNo = [&](const QString& description) {
        QJsonObject schema = matching(yesNo, placeholder, description);
        schema.insert("type", QJsonArray{"string", "boolean"});
        return schema;
    };
    const auto text = [](const QString& description) {
        return QJsonObject{{"type", kScalar}, {"description", description}};
    };
    const auto time = [&](const QString& description) {
        return matching(durationPattern(), placeholder, description);
    };
    return {
        {"signal", text("What is watched: \"device.signal\".")},
        {"above", matching(number, placeholder, "An alarm while the number is greater.")},
        {"below", matching(number, placeholder, "An alarm while the number is less.")},
        {"equals", text("An alarm while the number or text is this one.")},
        {"is", yesOrNo("An alarm while the signal says this: true or false.")},
        {"deadband", matching(number, placeholder, "How far a number must come back to end it.")},
        {"delay", time("How long the limit must be passed before the alarm begins, as 2 s.")},
        {"offDelay", time("How long the limit must be kept before the alarm ends, as 5 min.")},
        {"priority", matching("^(?:high|medium|low)$", placeholder, "medium by default.")},
        {"text", text("What the operator reads.")},
        {"help", text("What the operator is to do.")},
        {"sound", yesOrNo("Whether the alarm is heard; true by default.")}};
}

} // namespace

QJsonObject alarmSchema(const QString& placeholder)
{
    const QJsonObject alarm{
        {"type", "object"},
        {"properties", keysOf(placeholder)},
        {"additionalProperties", false},
        {"required", QJsonArray{"signal"}},
        {"oneOf", QJsonArray{limit("above"), limit("below"), limit("equals"), limit("is")}}};
    return {{"type", QJsonArray{"array", "null"}},
            {"items", alarm},
            {"description", "When the value of a signal is an alarm."}};
}

} // namespace norvo
