// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/plain/PlainYaml.h"

#include <yaml-cpp/emitterstyle.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace norvo {

namespace {

constexpr int kMaxKey = 1000; ///< In bytes; the parser takes none that is much longer.

bool isOneOf(char c, const char* characters)
{
    return c != '\0' && std::strchr(characters, c);
}

bool isBlankOrEnd(char c)
{
    return c == ' ' || c == '\n';
}

/// What a text without quotes may begin with; more is allowed.
bool beginsText(char c)
{
    return uchar(c) >= 0x80 || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           (c >= '0' && c <= '9') || isOneOf(c, "_./$(+");
}

/// What the parser tells as no value.
bool isNothing(const std::string& text)
{
    return text == "~" || text == "null" || text == "Null" || text == "NULL";
}

} // namespace

PlainYaml::PlainYaml(const SourceText& source, YamlBuilder& builder)
    : m_builder(builder), m_source(source), m_at(source.bytes().constData())
{}

YAML::Mark PlainYaml::markAt(int offset) const
{
    YAML::Mark mark;
    mark.pos = offset;
    return mark;
}

bool PlainYaml::read()
{
    const QByteArray& bytes = m_source.bytes();
    if (m_source.start() != 0 || !bytes.endsWith('\n') || bytes.contains('\t') ||
        bytes.contains('\r') || bytes.contains("\xef\xbb\xbf") || !nextLine() || m_indent != 0) {
        return false;
    }
    m_builder.OnDocumentStart(markAt(m_pos));
    if (!block(0) || m_indent >= 0) {
        return false;
    }
    m_builder.OnDocumentEnd();
    return true;
}

/// To the first character of the next line that has more than a comment. It gives up at what may
/// mark a document.
bool PlainYaml::nextLine()
{
    while (m_pos < m_source.size()) {
        const int start = m_pos;
        skipBlanks();
        const char first = at(m_pos);
        if (first != '\n' && first != '#') {
            m_indent = m_pos - start;
            return m_indent > 0 || !isOneOf(first, "-.%") || (first == '-' && at(m_pos + 1) == ' ');
        }
        m_pos = int(static_cast<const char*>(
                        std::memchr(m_at + m_pos, '\n', std::size_t(m_source.size() - m_pos))) -
                    m_at) +
                1;
    }
    m_indent = -1;
    return true;
}

/// Nothing but a comment may be left in the line.
bool PlainYaml::endLine()
{
    const bool isApart = at(m_pos) == ' ';
    skipBlanks();
    if (at(m_pos) != '\n' && !(at(m_pos) == '#' && isApart)) {
        return false;
    }
    return nextLine();
}

void PlainYaml::skipBlanks()
{
    while (at(m_pos) == ' ') {
        ++m_pos;
    }
}

bool PlainYaml::block(int indent)
{
    const bool isList = at(m_pos) == '-' && at(m_pos + 1) == ' ';
    return isList ? list(indent) : map(indent);
}

bool PlainYaml::map(int indent)
{
    m_builder.OnMapStart(markAt(m_pos), "?", 0, YAML::EmitterStyle::Block);
    do {
        Scalar key;
        if (!scalar(false, key) || !isKeyEnd() || key.end - key.begin > kMaxKey || !tell(key)) {
            return false;
        }
        ++m_pos;
        if (!valueOfKey(indent)) {
            return false;
        }
    } while (m_indent == indent);
    m_builder.OnMapEnd();
    return m_indent < indent;
}

bool PlainYaml::list(int indent)
{
    m_builder.OnSequenceStart(markAt(m_pos), "?", 0, YAML::EmitterStyle::Block);
    do {
        if (at(m_pos) != '-' || at(m_pos + 1) != ' ') {
            return false;
        }
        ++m_pos;
        skipBlanks();
        if (!valueInLine(indent)) {
            return false;
        }
    } while (m_indent == indent);
    m_builder.OnSequenceEnd();
    return m_indent < indent;
}

bool PlainYaml::valueOfKey(int indent)
{
    const int colon = m_pos;
    skipBlanks();
    if (at(m_pos) != '\n' && at(m_pos) != '#') {
        return valueInLine(indent);
    }
    m_pos = colon;
    return endLine() && m_indent > indent && block(m_indent);
}

bool PlainYaml::valueInLine(int indent)
{
    if (isOneOf(at(m_pos), "[{")) {
        if (!flow(0)) {
            return false;
        }
    } else {
        Scalar text;
        if (!scalar(false, text) || isKeyEnd() || !tell(text)) {
            return false;
        }
    }
    return endLine() && m_indent <= indent;
}

bool PlainYaml::flow(int depth)
{
    const bool isMap = at(m_pos) == '{';
    const char closing = isMap ? '}' : ']';
    if (isMap) {
        m_builder.OnMapStart(markAt(m_pos), "?", 0, YAML::EmitterStyle::Flow);
    } else {
        m_builder.OnSequenceStart(markAt(m_pos), "?", 0, YAML::EmitterStyle::Flow);
    }
    ++m_pos;
    skipBlanks();
    while (at(m_pos) != closing) {
        if (!flowEntry(isMap, depth)) {
            return false;
        }
        skipBlanks();
        if (at(m_pos) == ',') {
            ++m_pos;
            skipBlanks();
            if (at(m_pos) == closing) {
                return false;
            }
        } else if (at(m_pos) != closing) {
            return false;
        }
    }
    ++m_pos;
    isMap ? m_builder.OnMapEnd() : m_builder.OnSequenceEnd();
    return true;
}

bool PlainYaml::flowEntry(bool isMap, int depth)
{
    Scalar text;
    if (isMap) {
        if (!scalar(true, text) || !isKeyEnd() || text.end - text.begin > kMaxKey || !tell(text)) {
            return false;
        }
        ++m_pos;
        skipBlanks();
    }
    if (isOneOf(at(m_pos), "[{")) {
        return depth < YamlTree::kMaxDepth && flow(depth + 1);
    }
    return scalar(true, text) && tell(text);
}

/// The colon of a key, with a space or a line end behind it.
bool PlainYaml::isKeyEnd() const
{
    return at(m_pos) == ':' && isBlankOrEnd(at(m_pos + 1));
}

bool PlainYaml::scalar(bool isInFlow, Scalar& found)
{
    return isOneOf(at(m_pos), "\"'") ? quoted(found) : plain(isInFlow, found);
}

bool PlainYaml::quoted(Scalar& found)
{
    const char quote = at(m_pos);
    found.begin = m_pos;
    found.isQuoted = true;
    for (++m_pos; at(m_pos) != quote || (quote == '\'' && at(m_pos + 1) == '\''); ++m_pos) {
        if (at(m_pos) == '\n' || (quote == '"' && at(m_pos) == '\\')) {
            return false;
        }
        if (at(m_pos) == quote) {
            ++m_pos;
        }
    }
    found.end = ++m_pos;
    return true;
}

bool PlainYaml::plain(bool isInFlow, Scalar& found)
{
    const bool isNegative = at(m_pos) == '-' && beginsText(at(m_pos + 1));
    if (!isNegative && !beginsText(at(m_pos))) {
        return false;
    }
    found.begin = m_pos;
    found.isQuoted = false;
    for (; at(m_pos) != '\n'; ++m_pos) {
        const char c = at(m_pos);
        if (c == ':' && isBlankOrEnd(at(m_pos + 1))) {
            break;
        }
        if (c == '#' && at(m_pos - 1) == ' ') {
            break;
        }
        if (isInFlow && (isOneOf(c, ",[]{}?") || (c == ':' && isOneOf(at(m_pos + 1), ",]}")))) {
            break;
        }
    }
    if (isInFlow && !isOneOf(at(m_pos), ",]}:")) {
        return false;
    }
    found.end = m_pos;
    while (at(found.end - 1) == ' ') {
        --found.end;
    }
    if (!isInFlow || at(m_pos) == ':') {
        m_pos = found.end; // A comment has its space before it, a colon must have none.
    }
    return true;
}

bool PlainYaml::tell(const Scalar& scalar)
{
    const int quotes = scalar.isQuoted ? 1 : 0;
    std::string text(m_at + scalar.begin + quotes,
                     std::size_t(scalar.end - scalar.begin - 2 * quotes));
    if (scalar.isQuoted && at(scalar.begin) == '\'') {
        for (auto quote = text.find("''"); quote != std::string::npos;
             quote = text.find("''", quote + 1)) {
            text.erase(quote, 1);
        }
    }
    if (!scalar.isQuoted && isNothing(text)) {
        return false;
    }
    m_builder.OnScalar(markAt(scalar.begin), scalar.isQuoted ? "!" : "?", 0, text);
    return true;
}

} // namespace norvo
