// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/Listing.h"

namespace norvo {

namespace {

constexpr int kWidth = 96; ///< Of a line, in characters.
const QString kIndent = QStringLiteral("      ");

/// The text in lines of no more than kWidth characters, where it has spaces.
QStringList wrapped(const QString& text, const QString& indent)
{
    QStringList lines;
    QString line = indent;
    for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
        if (line.size() > indent.size() && line.size() + 1 + word.size() > kWidth) {
            lines.append(line);
            line = indent;
        }
        line += (line.size() > indent.size() ? " " : "") + word;
    }
    return line.size() > indent.size() ? lines << line : lines;
}

QStringList linesOf(const ParamWords& param)
{
    QStringList facts{Listing::valuesOf(param), param.defaultValue.isEmpty()
                                                    ? QString("empty by default")
                                                    : "default " + param.defaultValue};
    facts += Listing::conditionOf(param);
    facts += param.isKept ? QString("kept from one start to the next") : QString();
    facts.removeAll(QString());
    return QStringList("  " + param.name) + wrapped(param.meaning, kIndent) +
           wrapped(facts.join("; "), kIndent);
}

QStringList linesOf(const QString& heading, const QVector<MethodWords>& methods)
{
    QStringList lines;
    for (const MethodWords& method : methods) {
        if (!method.isForWidget) {
            lines += QString("  %1: %2").arg(method.signature, method.carries());
            lines += wrapped(method.meaning, kIndent);
        }
    }
    return lines.isEmpty() ? lines : QStringList{QString(), heading} + lines;
}

QStringList params(const TypeWords& type, const QString& heading, bool ofEveryType)
{
    QStringList lines;
    for (const ParamWords& param : type.params) {
        if (param.isOfEveryType == ofEveryType) {
            lines += linesOf(param);
        }
    }
    return lines.isEmpty() ? lines : QStringList{QString(), heading} + lines;
}

QStringList relations(const TypeWords& type)
{
    QStringList lines;
    for (const Relation& relation : type.relations) {
        lines += "  " + relation.toString();
    }
    return lines.isEmpty() ? lines : QStringList{QString(), "What must hold"} + lines;
}

QStringList example(const TypeWords& type)
{
    QStringList lines;
    for (const QString& line : type.example.split('\n', Qt::SkipEmptyParts)) {
        lines += "  " + line;
    }
    return lines.isEmpty() ? lines : QStringList{QString(), "A panel that runs"} + lines;
}

/// What the panel's author may define under that key.
QStringList ports(const TypeWords& type, const QString& key, const QString& definition)
{
    return type.takesPorts
               ? QStringList{QString(), "Under \"" + key + "\""} + wrapped(definition, "  ")
               : QStringList();
}

QString textOf(const TypeWords& type)
{
    QStringList lines = wrapped(type.key + ": " + type.purpose, QString());
    lines += wrapped(type.notes, "  ");
    lines += "  Category: " + type.categories.join(", ") +
             (type.hasWidget ? QString() : QString("; nothing to be seen on the panel"));
    lines += params(type, "Parameters", false);
    lines += params(type, "Place on the panel", true);
    lines += relations(type);
    lines += linesOf("Outputs", type.outputs);
    lines += linesOf("Inputs", type.inputs);
    lines += ports(type, "outputs", type.outputDefinition);
    lines += ports(type, "inputs", type.inputDefinition);
    return (lines + example(type)).join('\n');
}

} // namespace

QString Listing::text(const Types& types)
{
    QStringList texts;
    for (const TypeWords* const type : types) {
        texts.append(textOf(*type));
    }
    return texts.join("\n\n\n");
}

} // namespace norvo
