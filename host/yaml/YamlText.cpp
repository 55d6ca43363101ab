// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlText.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

#include <algorithm>

namespace norvo {

namespace {

/// True for what an editor may show as nothing or as a new line, and what YAML does not take raw.
bool needsEscape(uint c)
{
    return c < 0x20 || (c >= 0x7f && c <= 0xa0) || c == 0x2028 || c == 0x2029 || c == 0xfeff ||
           (c & 0xfffe) == 0xfffe || QChar::isSurrogate(c);
}

bool hasEscapes(const QString& text)
{
    const QVector<uint> characters = text.toUcs4();
    return std::any_of(characters.cbegin(), characters.cend(), needsEscape);
}

QString escape(uint c)
{
    return c <= 0xffff ? QString("\\u%1").arg(c, 4, 16, QChar('0'))
                       : QString("\\U%1").arg(c, 8, 16, QChar('0'));
}

/// The only entry of the map that this line holds; nothing where it holds anything else.
std::optional<YamlEntry> onlyEntry(const QString& line)
{
    const auto tree = YamlTree::read(SourceText(line.toUtf8()));
    const auto* const root = std::get_if<YamlNodePtr>(&tree);
    return root && (*root)->kind == YamlNode::Kind::Map && (*root)->entries.size() == 1
               ? std::make_optional((*root)->entries[0])
               : std::nullopt;
}

bool isVerbatim(const YamlNode& node, const QString& text)
{
    return node.kind == YamlNode::Kind::Text && node.text == text;
}

bool isPlainValue(const QString& text, bool isFlow)
{
    // In a flow map a space may follow, which makes a sign of a dash.
    const auto entry = onlyEntry(QString(isFlow ? "{k: %1 }\n" : "k: %1\n").arg(text));
    return entry && isVerbatim(*entry->value, text) && entry->key->text == "k";
}

bool isPlainKey(const QString& text)
{
    const auto entry = onlyEntry(QString("{%1: v}\n").arg(text));
    return entry && isVerbatim(*entry->key, text) && isVerbatim(*entry->value, "v");
}

QString inLeastQuotes(const QString& text)
{
    const bool isPlainInDouble = !text.contains('"') && !text.contains('\\');
    const auto single = YamlText::singleQuoted(text);
    return isPlainInDouble || text.contains('\'') || !single ? YamlText::doubleQuoted(text)
                                                             : *single;
}

QString inTheseQuotes(const QString& text, QChar quote)
{
    const auto single = quote == '\'' ? YamlText::singleQuoted(text) : std::nullopt;
    return single ? *single : YamlText::doubleQuoted(text);
}

} // namespace

QString YamlText::doubleQuoted(const QString& text)
{
    QString result = "\"";
    const QVector<uint> characters = text.toUcs4();
    for (uint c : characters) {
        if (QChar::isSurrogate(c)) {
            c = QChar::ReplacementCharacter;
        }
        if (c == '"' || c == '\\') {
            result += '\\';
            result += QChar(c);
        } else if (c == '\n') {
            result += "\\n";
        } else if (needsEscape(c)) {
            result += escape(c);
        } else {
            result += QString::fromUcs4(&c, 1);
        }
    }
    return result + '"';
}

std::optional<QString> YamlText::singleQuoted(const QString& text)
{
    if (hasEscapes(text)) {
        return std::nullopt;
    }
    return '\'' + QString(text).replace("'", "''") + '\'';
}

QString YamlText::leastQuoted(const QString& text, bool isFlow)
{
    return !hasEscapes(text) && isPlainValue(text, isFlow) ? text : inLeastQuotes(text);
}

QString YamlText::leastQuotedKey(const QString& key)
{
    return !hasEscapes(key) && key != "<<" && isPlainKey(key) ? key : inLeastQuotes(key);
}

QString YamlText::quoted(const QString& text, bool isFlow, const YamlQuotes& quotes)
{
    static const QRegularExpression word("^([-+.0-9].*|true|false|yes|no|on|off|null|~)$");
    return quotes.text.isNull() || word.match(text).hasMatch() ? leastQuoted(text, isFlow)
                                                               : inTheseQuotes(text, quotes.text);
}

QString YamlText::quotedKey(const QString& key, const YamlQuotes& quotes)
{
    return quotes.key.isNull() ? leastQuotedKey(key) : inTheseQuotes(key, quotes.key);
}

std::optional<QString> YamlText::block(const QString& text, const QString& header,
                                       const QString& indent, const QString& lineEnd)
{
    const QString body = text.endsWith('\n') ? text.chopped(1) : text;
    const bool hasLines = body.contains('\n');
    if (body.isEmpty() || body.startsWith(' ') || body.startsWith('\n') || body.endsWith('\n') ||
        hasEscapes(QString(body).remove('\n'))) {
        return std::nullopt;
    }
    QString result = hasLines ? QString("|") : header.left(1);
    result += text.endsWith('\n') ? "" : "-";
    result += header.mid(1);
    for (const QString& line : body.split('\n')) {
        result += lineEnd + (line.isEmpty() ? QString() : indent + line);
    }
    return result;
}

QString YamlText::flow(const YamlNode& node, const YamlQuotes& quotes)
{
    if (node.isText()) {
        return quoted(node.text, true, quotes);
    }
    QStringList parts;
    for (const YamlEntry& entry : node.entries) {
        const QString key = entry.key ? quotedKey(entry.key->text, quotes) + ": " : QString();
        parts += key + flow(*entry.value, quotes);
    }
    const bool isList = node.kind == YamlNode::Kind::List;
    return (isList ? '[' : '{') + parts.join(", ") + (isList ? ']' : '}');
}

} // namespace norvo
