// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Listing.h"

#include <QFile>

namespace norvo {

namespace {

/// A text in a cell of a table.
QString cell(QString text)
{
    return text.replace('|', "\\|").replace('<', "&lt;").replace('\n', ' ');
}

QString code(const QString& text)
{
    return text.isEmpty() ? QString() : '`' + QString(text).replace('|', "\\|") + '`';
}

QString row(const QStringList& cells)
{
    return "| " + cells.join(" | ") + " |";
}

QStringList table(const QStringList& heads, const QStringList& rows)
{
    return rows.isEmpty()
               ? rows
               : QStringList{QString(), row(heads), QString("|---").repeated(heads.size()) + '|'} +
                     rows;
}

QString rowOf(const ParamWords& param)
{
    QStringList values{param.options.isEmpty() ? cell(Listing::valuesOf(param)) : QString()};
    for (const QString& option : param.options) {
        values[0] += (values[0].isEmpty() ? "" : ", ") + code(option);
    }
    values += cell(Listing::conditionOf(param));
    values += param.isKept ? QString("kept from one start to the next") : QString();
    values.removeAll(QString());
    return row({code(param.name), cell(param.meaning), values.join("; "),
                param.defaultValue.isEmpty() ? "empty" : code(param.defaultValue)});
}

QStringList paramTable(const TypeWords& type, bool ofEveryType)
{
    QStringList rows;
    for (const ParamWords& param : type.params) {
        if (param.isOfEveryType == ofEveryType) {
            rows += rowOf(param);
        }
    }
    return table({"Parameter", "What it means", "Values", "Default"}, rows);
}

QStringList methodTable(const QString& head, const QVector<MethodWords>& methods)
{
    QStringList rows;
    for (const MethodWords& method : methods) {
        if (!method.isForWidget) {
            rows += row({code(method.signature), cell(method.carries()), cell(method.meaning)});
        }
    }
    return table({head, "Carries", "What it means"}, rows);
}

QStringList relations(const TypeWords& type)
{
    QStringList texts;
    for (const Relation& relation : type.relations) {
        texts += code(relation.toString());
    }
    return texts.isEmpty() ? texts
                           : QStringList{QString(), "It must hold: " + texts.join(", ") + '.'};
}

QStringList example(const TypeWords& type)
{
    if (type.example.isEmpty()) {
        return {};
    }
    return {QString(),
            QString("![%1 on a panel](pictures/devices/%1.png)").arg(type.key),
            QString(),
            "```yaml",
            type.example.trimmed(),
            "```"};
}

/// What the panel's author may define under that key.
QStringList ports(const TypeWords& type, const QString& key, const QString& definition)
{
    return type.takesPorts ? QStringList{QString(), "**Under `" + key + "`:** " + cell(definition)}
                           : QStringList();
}

QStringList section(const TypeWords& type)
{
    QStringList lines{QString(), "## " + type.key, QString(), cell(type.purpose)};
    if (!type.notes.isEmpty()) {
        lines += {QString(), cell(type.notes)};
    }
    lines += example(type);
    lines += paramTable(type, false);
    lines += relations(type);
    lines += methodTable("Output", type.outputs);
    lines += methodTable("Input", type.inputs);
    lines += ports(type, "outputs", type.outputDefinition);
    return lines + ports(type, "inputs", type.inputDefinition);
}

QStringList contents(const Listing::Types& types)
{
    QStringList rows;
    for (const TypeWords* const type : types) {
        rows += row({QString("[%1](#%1)").arg(type->key), cell(type->purpose),
                     cell(type->categories.join(", "))});
    }
    return table({"Type", "What it is for", "Category"}, rows);
}

QStringList place(const Listing::Types& types)
{
    for (const TypeWords* const type : types) {
        const QStringList rows = paramTable(*type, true);
        if (!rows.isEmpty()) {
            return QStringList{QString(), "## Place on the panel", QString(),
                               "Each type that can be seen has these parameters, too."} +
                   rows;
        }
    }
    return {};
}

QString introduction()
{
    QFile file(":/norvo/words/introduction.md");
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

} // namespace

QString Listing::markdown(const Types& types)
{
    QStringList lines;
    if (types.size() > 1) {
        lines += introduction();
        lines += contents(types);
        lines += place(types);
    }
    for (const TypeWords* const type : types) {
        lines += section(*type);
    }
    return lines.join('\n').trimmed();
}

} // namespace norvo
