// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlTokens.h"

#include "host/yaml/YamlTree.h"

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

YamlLookahead::YamlLookahead(const SourceText& source, const Start& start)
    : m_source(source), m_now(start)
{}

int YamlLookahead::run()
{
    while (m_now.offset < m_source.size()) {
        const char c = m_source.at(m_now.offset);
        if (c == '\n' && m_now.brackets == 0 && m_isAfterText) {
            break; // The next line may belong to the text.
        }
        if (SourceText::isSpace(c)) {
            ++m_now.offset;
        } else if (c == '#' && isAtWordStart()) {
            m_now.offset = m_source.lineEnd(m_now.offset);
        } else if (!readToken(c)) {
            break;
        }
    }
    return m_now.offset;
}

/// Goes behind the token; false before a text in a block, the end of which depends on its
/// indentation.
bool YamlLookahead::readToken(char c)
{
    if (++m_tokens > YamlTokens::kMaxTokens) {
        throw TextError{m_source.placeAt(m_now.offset),
                        "more than 1,000,000 tokens in one list, map or line"};
    }
    m_isAfterText = false;
    const bool isInBrackets = m_now.brackets > 0;
    if (c == '[' || c == '{') {
        open();
    } else if (c == ']' || c == '}') {
        close();
    } else if (c == ',') {
        count(isInBrackets && !m_isCounted ? 1 : 0);
        m_isCounted = false;
        ++m_now.offset;
    } else if (c == '"' || c == '\'') {
        m_now.offset = YamlTokens::quotedAt(m_source, m_now.offset).end;
    } else if (c == '&' || c == '!' || c == '*') {
        m_now.offset = YamlTokens::propertyEnd(m_source, m_now.offset);
    } else if ((c == '-' || c == '?' || c == ':') &&
               SourceText::isSpace(m_source.at(m_now.offset + 1))) {
        ++m_now.offset;
    } else if (!isInBrackets && (c == '|' || c == '>')) {
        return false;
    } else if (!isInBrackets && (c == '%' || isDocumentMark())) {
        m_now.offset = c == '%' ? m_source.lineEnd(m_now.offset) : m_now.offset + 3;
    } else {
        skipPlain();
    }
    return true;
}

void YamlLookahead::open()
{
    ++m_now.brackets;
    if (++m_now.depth > YamlTree::kMaxDepth) {
        throw YamlTree::tooDeep(m_source.placeAt(m_now.offset));
    }
    count(1);
    m_isCounted = false;
    ++m_now.offset;
}

void YamlLookahead::close()
{
    m_now.depth -= m_now.brackets > 0 ? 1 : 0;
    m_now.brackets = std::max(m_now.brackets - 1, 0);
    m_isCounted = true;
    ++m_now.offset;
}

void YamlLookahead::count(int values)
{
    m_now.values += values;
    if (m_now.values > YamlTree::kMaxValues) {
        throw YamlTree::tooMany(m_source.placeAt(m_now.offset));
    }
}

void YamlLookahead::skipPlain()
{
    m_isAfterText = true;
    const bool isInBrackets = m_now.brackets > 0;
    const int lineEnd = m_source.lineEnd(m_now.offset);
    for (++m_now.offset; m_now.offset < lineEnd; ++m_now.offset) {
        const char c = m_source.at(m_now.offset);
        const char next = m_source.at(m_now.offset + 1);
        const bool isMark = isInBrackets && YamlTokens::isFlowMark(c);
        const bool endsKey = c == ':' && (SourceText::isSpace(next) ||
                                          (isInBrackets && YamlTokens::isFlowMark(next)));
        if (isMark || endsKey || (c == '#' && isAtWordStart())) {
            break;
        }
    }
}

/// Whether a line begins here with what ends or begins a document.
bool YamlLookahead::isDocumentMark() const
{
    const QByteArray mark = m_source.bytes().mid(m_now.offset, 3);
    return (mark == "---" || mark == "...") && m_source.lineStart(m_now.offset) == m_now.offset;
}

bool YamlLookahead::isAtWordStart() const
{
    return m_now.offset == 0 || SourceText::isSpace(m_source.at(m_now.offset - 1));
}

} // namespace norvo
