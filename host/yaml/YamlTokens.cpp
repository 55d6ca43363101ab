// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlTokens.h"

#include <algorithm>

namespace norvo {

bool YamlTokens::isFlowMark(char c)
{
    return c == ',' || c == '[' || c == ']' || c == '{' || c == '}';
}

int YamlTokens::propertyEnd(const SourceText& source, int offset)
{
    int i = offset;
    if (source.at(i) == '!' && source.at(i + 1) == '<') {
        const int end = source.bytes().indexOf('>', i);
        i = end < 0 ? source.size() : end;
    }
    while (i < source.size() && !SourceText::isSpace(source.at(i)) && !isFlowMark(source.at(i))) {
        ++i;
    }
    return i;
}

int YamlTokens::skipProperties(const SourceText& source, int offset)
{
    int i = offset;
    while (source.at(i) == '&' || source.at(i) == '!') {
        i = propertyEnd(source, i);
        while (SourceText::isSpace(source.at(i)) || source.at(i) == '#') {
            i = source.at(i) == '#' ? source.lineEnd(i) : i + 1;
        }
    }
    return i;
}

YamlTokens::Quoted YamlTokens::quotedAt(const SourceText& source, int offset)
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
    quoted.end = std::min(i, source.size());
    return quoted;
}

} // namespace norvo
