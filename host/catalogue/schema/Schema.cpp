// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/schema/Schema.h"

#include "host/catalogue/schema/AlarmSchema.h"
#include "host/catalogue/schema/LookSchema.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/Listing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <QVector>

namespace norvo {

namespace {

struct NamedSchema
{
    QString name;
    QJsonObject schema;
};

constexpr int kMaxShift = 999; ///< Rows and columns, of the use of a template.

const QString kPlaceholder = QStringLiteral("\\$\\("); ///< In a template, it may stand anywhere.
/// Letters, digits, "_" and "-"; of letters beyond ASCII, not every editor's patterns know the
/// classes.
const QString kId = QStringLiteral("^[^\\x00-,./:-@\\[-^`{-\\x7f]+$");
const QString kConnection = QStringLiteral("^\\s*[^\\s.]+\\s*\\.\\s*[^\\s>]((?!->)[\\s\\S])*->"
                                           "\\s*[^\\s.]+\\s*\\.\\s*\\S((?!->)[\\s\\S])*$");
const QString kNumber =
    QStringLiteral("^\\s*[-+]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][-+]?[0-9]+)?\\s*$"
                   "|^\\s*([-+]?[iI][nN][fF]|[nN][aA][nN])\\s*$");
const QString kYesNo = QStringLiteral("^\\s*([tT][rR][uU][eE]|[yY][eE][sS]|[oO][nN]|1"
                                      "|[fF][aA][lL][sS][eE]|[nN][oO]|[oO][fF][fF]|0)\\s*$");

/// Every value is a text for the program, and an editor takes some texts for something else.
QJsonObject anyText()
{
    return {{"type", QJsonArray{"string", "number", "boolean", "null"}}};
}

QJsonObject orPlaceholder(const QJsonObject& schema)
{
    return {
        {"anyOf", QJsonArray{schema, QJsonObject{{"pattern", kPlaceholder}, {"type", "string"}}}}};
}

QJsonObject textLike(const QString& pattern)
{
    return {{"type", "string"}, {"pattern", pattern + '|' + kPlaceholder}};
}

QJsonObject reference(const QString& definition)
{
    return {{"$ref", "#/definitions/" + definition}};
}

/// A map without other keys; one with nothing in it can be left away.
QJsonObject mapOf(const QJsonObject& properties)
{
    return {{"type", QJsonArray{"object", "null"}},
            {"properties", properties},
            {"additionalProperties", false}};
}

QJsonObject mapOfAll(const QJsonObject& values)
{
    return {{"type", QJsonArray{"object", "null"}}, {"additionalProperties", values}};
}

QJsonObject listOf(const QJsonObject& items)
{
    return {{"type", QJsonArray{"array", "null"}}, {"items", items}};
}

/// "[rR][oO][wW]": draft 7 knows no patterns that disregard case.
QString inAnyCase(const QString& name)
{
    QString pattern;
    for (const QChar character : name) {
        const QString upper = character.toUpper();
        const QString lower = character.toLower();
        pattern += upper == lower ? QRegularExpression::escape(lower) : '[' + lower + upper + ']';
    }
    return pattern;
}

QString anyInAnyCase(const QStringList& names)
{
    QStringList patterns;
    for (const QString& name : names) {
        patterns += inAnyCase(name);
    }
    return "^(" + patterns.join('|') + ")$";
}

/// The options, also as what an editor takes them for.
QJsonArray spellings(const QStringList& options)
{
    QJsonArray values;
    for (const QString& option : options) {
        bool isNumber = false;
        const double number = option.toDouble(&isNumber);
        values.append(option);
        if (isNumber) {
            values.append(number);
        } else if (option == "true" || option == "false") {
            values.append(option == "true");
        } else if (option.isEmpty()) {
            values.append(QJsonValue::Null);
        }
    }
    return values;
}

QJsonObject numberOf(const ParamWords& param)
{
    const QString also =
        param.also.isEmpty() ? QString() : "|^\\s*" + inAnyCase(param.also) + "\\s*$";
    QJsonObject schema{
        {"type", QJsonArray{param.kind == ParamKind::WholeNumber ? "integer" : "number", "string"}},
        {"pattern", kNumber + also + '|' + kPlaceholder}};
    const auto add = [&schema](const QString& key, const std::optional<double>& limit) {
        if (limit) {
            schema.insert(key, *limit);
        }
    };
    add("minimum", param.min);
    add("exclusiveMinimum", param.above);
    add("maximum", param.max);
    return schema;
}

QJsonObject valuesOf(const ParamWords& param)
{
    if (!param.options.isEmpty()) {
        return orPlaceholder({{"enum", spellings(param.options)}});
    }
    bool isNumber = false;
    param.defaultValue.toDouble(&isNumber);
    if (isNumber) {
        return numberOf(param);
    }
    if (param.defaultValue == "true" || param.defaultValue == "false") {
        return {{"type", QJsonArray{"boolean", "number", "string"}},
                {"minimum", 0},
                {"maximum", 1},
                {"pattern", kYesNo + '|' + kPlaceholder}};
    }
    return anyText();
}

QJsonObject schemaOf(const ParamWords& param)
{
    QStringList facts{param.meaning, "(" + Listing::valuesOf(param) + ")",
                      Listing::conditionOf(param)};
    facts.removeAll(QString());
    QJsonObject schema = valuesOf(param);
    schema.insert("description", facts.join(' '));
    schema.insert("default", param.defaultValue);
    return schema;
}

/// Parameters as one map; "widget/row" is also row in a map widget. Names in another case are
/// allowed, and not looked into.
QJsonObject paramsOf(const QVector<NamedSchema>& params)
{
    QJsonObject properties;
    QStringList names;
    QMap<QString, QVector<NamedSchema>> below;
    for (const NamedSchema& param : params) {
        properties.insert(param.name, param.schema);
        names.append(param.name);
        for (int slash = param.name.indexOf('/'); slash >= 0;
             slash = param.name.indexOf('/', slash + 1)) {
            below[param.name.left(slash)].append({param.name.mid(slash + 1), param.schema});
        }
    }
    for (auto map = below.cbegin(); map != below.cend(); ++map) {
        const QJsonObject nested = paramsOf(*map);
        const QJsonValue single = properties.value(map.key());
        properties.insert(map.key(), single.isUndefined()
                                         ? nested
                                         : QJsonObject{{"anyOf", QJsonArray{single, nested}}});
        names.append(map.key());
    }
    QJsonObject schema = mapOf(properties);
    schema.insert("patternProperties",
                  QJsonObject{{anyInAnyCase(names), true}, {kPlaceholder, anyText()}});
    return schema;
}

QJsonObject paramsOf(const TypeWords& type)
{
    QVector<NamedSchema> params;
    for (const ParamWords& param : type.params) {
        params.append({param.name, schemaOf(param)});
    }
    return paramsOf(params);
}

/// Outputs or inputs that the panel's author names; where the type takes none, there is no such
/// key.
QJsonValue portsOf(const TypeWords& type, const QString& definition)
{
    if (!type.takesPorts) {
        return false;
    }
    QJsonObject text = anyText();
    text.insert("description", definition);
    const QJsonObject withOptions{{"type", "object"},
                                  {"properties", QJsonObject{{"as", text}}},
                                  {"additionalProperties", anyText()}};
    QJsonObject ports = mapOfAll({{"anyOf", QJsonArray{text, withOptions}}});
    ports.insert("propertyNames", QJsonObject{{"pattern", kId + '|' + kPlaceholder}});
    ports.insert("description", definition);
    return ports;
}

/// What a device may hold depends on its type.
QJsonObject keysOf(const TypeWords& type)
{
    return {{"params", paramsOf(type)},
            {"outputs", portsOf(type, type.outputDefinition)},
            {"inputs", portsOf(type, type.inputDefinition)}};
}

/// The keys of a device, and its parameters, which depend on its type.
QJsonObject device(const Catalogue& catalogue)
{
    QJsonArray byType;
    QJsonArray types;
    for (const TypeWords* const type : Listing::allTypes(catalogue)) {
        types.append(QJsonObject{{"const", type->key}, {"description", type->purpose}});
        const QJsonObject isOfType{{"type", "string"}, {"pattern", anyInAnyCase({type->key})}};
        byType.append(
            QJsonObject{{"if", QJsonObject{{"properties", QJsonObject{{"device", isOfType}}}}},
                        {"then", QJsonObject{{"properties", keysOf(*type)}}}});
    }
    types.append(textLike(anyInAnyCase(catalogue.keys())));
    QJsonObject network = orPlaceholder({{"enum", spellings({"true", "false"})}});
    network.insert("description",
                   "Whether a QML document that this device shows may reach the network.");
    QJsonObject keep = orPlaceholder({{"enum", spellings({"true", "false", "silent", "send"})}});
    keep.insert("description",
                "Whether the value that an operator gave is put back at the next start: silently, "
                "which is also what true says, or so that the device sends it; false: not at all.");
    QJsonObject access = orPlaceholder({{"enum", QJsonArray{"view", "operate", "engineer"}}});
    access.insert("description", "The role that may operate this control.");
    QJsonObject confirm{{"type", QJsonArray{"string", "boolean"}},
                        {"pattern", "\\S"},
                        {"description",
                         "What is asked before the control changes; yes: a question that names "
                         "the device."}};
    QJsonObject schema = mapOf(
        {{"device", QJsonObject{{"description", "The type of the device."}, {"anyOf", types}}},
         {"params", QJsonObject{{"description", "Parameters by name; the others have defaults."},
                                {"type", QJsonArray{"object", "null"}}}},
         {"outputs",
          QJsonObject{{"description", "Outputs that it gets: a name and a definition."}}},
         {"inputs", QJsonObject{{"description", "Inputs that it gets: a name and a definition."}}},
         {"network", network},
         {"keep", keep},
         {"access", access},
         {"confirm", confirm}});
    schema.insert("type", "object");
    schema.insert("required", QJsonArray{"device"});
    schema.insert("allOf", byType);
    return schema;
}

QJsonObject use()
{
    const QJsonObject shift{{"type", QJsonArray{"integer", "string"}},
                            {"minimum", 0},
                            {"maximum", kMaxShift},
                            {"pattern", "^\\s*\\+?[0-9]+\\s*$|" + kPlaceholder}};
    QJsonObject at = mapOf({{"row", shift}, {"column", shift}, {"area", anyText()}});
    at.insert("description", "How far its devices are moved, and the tab that they stand on.");
    QJsonObject with = mapOfAll(anyText());
    with.insert("description", "The values of the template's placeholders.");
    QJsonObject name = anyText();
    name.insert("description", "The name of a template.");
    QJsonObject schema = mapOf({{"use", name}, {"with", with}, {"at", at}});
    schema.insert("type", "object");
    return schema;
}

QJsonObject devices()
{
    QJsonObject schema = mapOfAll({{"if", QJsonObject{{"required", QJsonArray{"use"}}}},
                                   {"then", reference("use")},
                                   {"else", reference("device")}});
    schema.insert("propertyNames", QJsonObject{{"pattern", kId + '|' + kPlaceholder}});
    schema.insert("description", "The id of each device, and what it is.");
    return schema;
}

QJsonObject connections()
{
    QJsonObject schema = listOf(textLike(kConnection));
    schema.insert("description", "What is connected to what: \"id.signal -> id.slot\".");
    return schema;
}

QJsonObject panelTemplate()
{
    QJsonObject placeholders = mapOfAll(anyText());
    placeholders.insert("propertyNames", QJsonObject{{"pattern", kId}});
    placeholders.insert("description", "Placeholders, and what stands for them by default.");
    return mapOf({{"with", placeholders},
                  {"devices", reference("devices")},
                  {"connections", reference("connections")},
                  {"alarms", reference("alarms")}});
}

} // namespace

QString Schema::ofPanelFiles(const Catalogue& catalogue)
{
    QJsonObject title = anyText();
    title.insert("description", "The title of the window; without it the name of the file.");
    QJsonObject include = listOf({{"type", "string"}, {"pattern", "\\S"}});
    include.insert("description", "Files whose templates are taken, relative to this one.");
    QJsonObject templates = mapOfAll(reference("template"));
    templates.insert("description", "Groups of devices and connections, to be used many times.");
    QJsonObject keys{{"title", title},
                     {"devices", reference("devices")},
                     {"connections", reference("connections")},
                     {"alarms", reference("alarms")},
                     {"templates", templates},
                     {"include", include}};
    addLookKeys(keys);
    addAccessKey(keys);
    addServiceKeys(keys);
    QJsonObject schema = mapOf(keys);
    schema.insert("type", "object");
    schema.insert("$schema", "http://json-schema.org/draft-07/schema#");
    schema.insert("title", "Panel of norvo-panel");
    schema.insert("definitions", QJsonObject{{"devices", devices()},
                                             {"connections", connections()},
                                             {"alarms", alarmSchema(kPlaceholder)},
                                             {"device", device(catalogue)},
                                             {"use", use()},
                                             {"template", panelTemplate()}});
    return QString::fromUtf8(QJsonDocument(schema).toJson()).trimmed();
}

} // namespace norvo
