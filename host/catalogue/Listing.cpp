// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Listing.h"

#include "host/catalogue/Catalogue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace norvo {

namespace {

QString anyOf(QStringList texts)
{
    const QString last = texts.takeLast();
    return texts.isEmpty() ? last : texts.join(", ") + " or " + last;
}

QJsonObject withNumber(QJsonObject object, const QString& key, const std::optional<double>& number)
{
    if (number) {
        object.insert(key, *number);
    }
    return object;
}

QJsonObject jsonOf(const ParamWords& param)
{
    QJsonObject conditions;
    for (auto other = param.enabledWhen.cbegin(); other != param.enabledWhen.cend(); ++other) {
        conditions.insert(other.key(), QJsonArray::fromStringList(*other));
    }
    const QJsonObject object{
        {"name", param.name},           {"meaning", param.meaning},
        {"kind", toString(param.kind)}, {"default", param.defaultValue},
        {"unit", param.unit},           {"options", QJsonArray::fromStringList(param.options)},
        {"also", param.also},           {"kept", param.isKept},
        {"enabledWhen", conditions}};
    return withNumber(withNumber(withNumber(object, "min", param.min), "above", param.above), "max",
                      param.max);
}

QJsonArray jsonOf(const QVector<MethodWords>& methods)
{
    QJsonArray array;
    for (const MethodWords& method : methods) {
        array.append(QJsonObject{{"name", method.name()},
                                 {"signature", method.signature},
                                 {"carries", method.carries()},
                                 {"meaning", method.meaning},
                                 {"forWidget", method.isForWidget}});
    }
    return array;
}

QJsonObject jsonOf(const TypeWords& type)
{
    QJsonArray params;
    for (const ParamWords& param : type.params) {
        params.append(jsonOf(param));
    }
    QJsonArray relations;
    for (const Relation& relation : type.relations) {
        relations.append(relation.toString());
    }
    return {{"type", type.key},
            {"title", type.title},
            {"purpose", type.purpose},
            {"notes", type.notes},
            {"categories", QJsonArray::fromStringList(type.categories)},
            {"widget", type.hasWidget},
            {"methodsKnownAfterStart", type.hasLateMethods},
            {"parameters", params},
            {"relations", relations},
            {"takesPorts", type.takesPorts},
            {"outputDefinition", type.outputDefinition},
            {"inputDefinition", type.inputDefinition},
            {"outputs", jsonOf(type.outputs)},
            {"inputs", jsonOf(type.inputs)},
            {"example", type.example}};
}

} // namespace

Listing::Types Listing::allTypes(const Catalogue& catalogue)
{
    Types types;
    for (const QString& key : catalogue.keys()) {
        types.append(catalogue.words(key));
    }
    return types;
}

QString Listing::lines(const Types& types)
{
    int width = 0;
    for (const TypeWords* const type : types) {
        width = std::max(width, type->key.size());
    }
    QStringList lines;
    for (const TypeWords* const type : types) {
        lines.append(type->purpose.isEmpty() ? type->key
                                             : type->key.leftJustified(width + 2) + type->purpose);
    }
    return lines.join('\n');
}

QString Listing::json(const Types& types)
{
    QJsonArray array;
    for (const TypeWords* const type : types) {
        array.append(jsonOf(*type));
    }
    return QString::fromUtf8(QJsonDocument(QJsonObject{{"types", array}}).toJson()).trimmed();
}

QString Listing::as(Format format, const Types& types)
{
    return format == Format::Text       ? text(types)
           : format == Format::Markdown ? markdown(types)
                                        : json(types);
}

QString Listing::valuesOf(const ParamWords& param)
{
    if (!param.options.isEmpty()) {
        return anyOf(param.options);
    }
    if (param.kind == ParamKind::YesNo) {
        return "true or false";
    }
    QString text = toString(param.kind);
    text += param.unit.isEmpty() ? QString() : " in " + param.unit;
    text += param.range().isEmpty() ? QString() : ", " + param.range();
    return text + (param.also.isEmpty() ? QString() : ", or " + param.also);
}

QString Listing::conditionOf(const ParamWords& param)
{
    QStringList conditions;
    for (auto other = param.enabledWhen.cbegin(); other != param.enabledWhen.cend(); ++other) {
        conditions.append(other.key() + " is " + anyOf(*other));
    }
    return conditions.isEmpty() ? QString() : "where " + conditions.join(" and ");
}

} // namespace norvo
