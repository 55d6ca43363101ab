// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/schema/LookSchema.h"

#include "host/panel/file/look/LookReader.h"
#include "host/panel/file/look/PanelLook.h"
#include "host/panel/file/services/Duration.h"
#include "host/panel/file/services/AuditReader.h"
#include "host/panel/file/services/HistoryReader.h"

#include <QJsonArray>
#include <QJsonObject>

namespace norvo {

namespace {

QJsonObject oneOf(const QString& key, const QString& description)
{
    return {{"enum", QJsonArray::fromStringList(lookNames(key))},
            {"default", lookDefault(key)},
            {"description", description}};
}

QJsonObject textLike(const QString& pattern, const QString& description)
{
    return {{"type", "string"}, {"pattern", pattern}, {"description", description}};
}

/// A list of weights, or one for each tab.
QJsonObject weights(const QString& description)
{
    const QJsonObject list{{"type", "array"},
                           {"items", QJsonObject{{"type", QJsonArray{"integer", "string"}},
                                                 {"pattern", "^\\d{1,3}$"},
                                                 {"minimum", 0},
                                                 {"maximum", PanelLook::kMaxWeight}}}};
    const QJsonObject tabs{{"type", "object"}, {"additionalProperties", list}};
    return {{"anyOf", QJsonArray{list, tabs}}, {"description", description}};
}

} // namespace

void addAccessKey(QJsonObject& keys)
{
    const QJsonObject hash{{"type", "string"}, {"pattern", "^\\$argon2id\\$"}};
    const QJsonObject roles{{"type", "object"},
                            {"properties", QJsonObject{{"operate", hash}, {"engineer", hash}}},
                            {"additionalProperties", false},
                            {"minProperties", 1},
                            {"description", "The hash of the PIN of each role, made by "
                                            "\"norvo-panel --make-pin\"."}};
    const QJsonObject lockAfter =
        textLike(durationPattern(), "The time without input after which the panel locks itself, "
                                    "such as \"5 min\", the default; \"0 s\": never.");
    keys.insert("access",
                QJsonObject{{"type", "object"},
                            {"properties", QJsonObject{{"roles", roles}, {"lockAfter", lockAfter}}},
                            {"additionalProperties", false},
                            {"required", QJsonArray{"roles"}},
                            {"description", "Who may operate the panel."}});
}

void addLookKeys(QJsonObject& keys)
{
    keys.insert("theme", oneOf("theme", "The colours; system by default."));
    keys.insert("touch",
                oneOf("touch", "How large keys are at least: 12.7 mm for fingers, the default, or "
                               "20 mm for gloves."));
    keys.insert("design", textLike("^\\d{1,5}x\\d{1,5}$",
                                   "The size in pixels that the panel was laid out for, such as "
                                   "1024x600."));
    keys.insert("fit",
                oneOf("fit", "What fills a larger window: the widgets, the default, or the page "
                             "as a whole, drawn larger; it needs \"design\"."));
    keys.insert("language", textLike("^[a-z]{2,3}([_-][A-Z][a-z]{3})?([_-][A-Z]{2})?$",
                                     "Of the program's own texts and keyboard, such as de or "
                                     "pt_BR; the system's by default."));
    keys.insert(
        "pages",
        QJsonObject{{"type", QJsonArray{"array", "null"}},
                    {"items", QJsonObject{{"type", QJsonArray{"string", "number", "boolean"}},
                                          {"minLength", 1}}},
                    {"uniqueItems", true},
                    {"description", "The names of the tabs in their order, those without "
                                    "devices too; tabs that only devices name follow."}});
    keys.insert("rows", weights("The share of the spare height that each row gets, for all tabs "
                                "or for each by its name; 0: none."));
    keys.insert("columns", weights("The share of the spare width that each column gets, for all "
                                   "tabs or for each by its name; 0: none."));
}

namespace {

QJsonObject historySchema()
{
    const auto map = [](const QJsonObject& properties) {
        return QJsonObject{{"type", QJsonArray{"object", "null"}},
                           {"properties", properties},
                           {"additionalProperties", false}};
    };
    QJsonObject settings{
        {"deadband", QJsonObject{{"type", QJsonArray{"number", "string"}},
                                 {"minimum", 0},
                                 {"pattern", "^\\s*\\+?[0-9.]+([eE][-+]?[0-9]+)?\\s*$"},
                                 {"description", "Changes by no more are left out."}}},
        {"every", textLike(durationPattern(), "The least time between two values, as 1 s.")}};
    QJsonObject inMap = map(settings);
    settings.insert("signal", QJsonObject{{"type", "string"}});
    QJsonObject inList = map(settings);
    inList.insert("type", "object");
    inList.insert("required", QJsonArray{"signal"});
    const QJsonObject listed{{"anyOf", QJsonArray{QJsonObject{{"type", "string"}}, inList}}};
    const QJsonObject recorded{
        {"anyOf", QJsonArray{QJsonObject{{"type", "array"}, {"minItems", 1}, {"items", listed}},
                             QJsonObject{{"type", "object"},
                                         {"minProperties", 1},
                                         {"additionalProperties", inMap}}}},
        {"description", "What is recorded: \"device.signal\"."}};
    return {{"type", "object"},
            {"properties",
             QJsonObject{
                 {"signals", recorded},
                 {"file", QJsonObject{{"type", "string"}, {"minLength", 1}}},
                 {"keep", textLike(durationPattern(), "How old a value gets; 30 d by default.")},
                 {"max", textLike(historySizePattern(), "Of the file; 500 MB by default.")}}},
            {"additionalProperties", false},
            {"required", QJsonArray{"signals"}},
            {"description", "What signals send is recorded, and graphs begin with it."}};
}

} // namespace

void addServiceKeys(QJsonObject& keys)
{
    keys.insert("history", historySchema());
    const QJsonObject file{{"type", "string"}, {"minLength", 1}};
    const QJsonObject map{
        {"type", "object"},
        {"additionalProperties", false},
        {"required", QJsonArray{"file"}},
        {"properties",
         QJsonObject{{"file", file},
                     {"size", textLike(auditSizePattern(),
                                       "Of one file; 10 MB by default. A larger one is renamed.")},
                     {"keep", QJsonObject{{"type", QJsonArray{"integer", "string"}},
                                          {"minimum", 0},
                                          {"maximum", AuditSetting::kMaxKept},
                                          {"pattern", "^\\d{1,4}$"},
                                          {"description", "Older files; 5 by default."}}}}}};
    keys.insert("audit", QJsonObject{{"anyOf", QJsonArray{file, map}},
                                     {"description", "The file in which what is done at the "
                                                     "panel is recorded, a JSON line each."}});
}

} // namespace norvo
