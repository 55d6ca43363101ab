// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlScan.h"

#include <QRegularExpression>

#include <cstring>

namespace norvo {

namespace {

/// What a tag is written in; a text may begin at once behind it.
bool isOfTag(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (c != '\0' && std::strchr("!-#;/?:@&=+$_.~*'()%<>", c));
}

} // namespace

bool YamlScan::isFlowMark(char c)
{
    return c == ',' || c == '[' || c == ']' || c == '{' || c == '}';
}

int YamlScan::propertyEnd(const SourceText& source, int offset)
{
    int i = offset;
    if (source.at(i) == '!' && source.at(i + 1) == '<') {
        const int end = source.bytes().indexOf('>', i);
        i = end < 0 ? source.size() : end;
    }
    const bool isTag = source.at(offset) == '!';
    while (i < source.size() && !SourceText::isSpace(source.at(i)) && !isFlowMark(source.at(i)) &&
           (!isTag || isOfTag(source.at(i)))) {
        ++i;
    }
    return i;
}

int YamlScan::propertiesEnd(const SourceText& source, int offset)
{
    int end = offset;
    for (int i = offset; source.at(i) == '&' || source.at(i) == '!'; i = skipSpace(source, end)) {
        end = propertyEnd(source, i);
    }
    return end;
}

int YamlScan::skipSpace(const SourceText& source, int offset)
{
    int i = offset;
    while (SourceText::isSpace(source.at(i)) || source.at(i) == '#') {
        i = source.at(i) == '#' ? source.lineEnd(i) : i + 1;
    }
    return i;
}

int YamlScan::skipProperties(const SourceText& source, int offset)
{
    const int end = propertiesEnd(source, offset);
    return end == offset ? offset : skipSpace(source, end);
}

YamlScan::Quoted YamlScan::quotedAt(const SourceText& source, int offset)
{
    const char quote = source.at(offset);
    Quoted quoted;
    int i = offset + 1;
    for (; i < source.size() && !quoted.isClosed; ++i) {
        const char c = source.at(i);
        if (c == '\\' && quote == '"') {
            quoted.hasEscapes = true;
            ++i;
        } else if (c == quote && quote == '\'' && source.at(i + 1) == quote) {
            ++i;
        } else {
            quoted.isClosed = c == quote;
        }
    }
    quoted.end = i;
    return quoted;
}

QString YamlScan::colourInComment(const SourceText& source, int begin, int end)
{
    static const QRegularExpression colour(
        "[ \t](#(?:[0-9A-Fa-f]{3}){1,2}|#[0-9A-Fa-f]{8})(?![\\w#])");
    return colour.match(QString::fromUtf8(source.bytes().mid(begin, end - begin))).captured(1);
}

} // namespace norvo
