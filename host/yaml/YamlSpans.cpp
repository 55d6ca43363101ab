// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlSpans.h"

#include "host/yaml/YamlScan.h"

#include <algorithm>

namespace norvo {

using YamlScan::skipProperties;
using YamlScan::skipSpace;

namespace {

/// What of a text stands in its source in any style without escapes.
QByteArray withoutSpaces(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    bytes.truncate(
        int(std::remove_if(bytes.begin(), bytes.end(), &SourceText::isSpace) - bytes.begin()));
    return bytes;
}

} // namespace

YamlSpan YamlSpans::spanOf(const YamlEntry& parent, int index) const
{
    const YamlEntry& entry = parent.value->entries[size_t(index)];
    YamlSpan span;
    span.begin = beginOf(parent, index);
    span.hasSign = parent.value->kind == YamlNode::Kind::List;
    if (entry.key) {
        behindSign(entry, span.hasSign);
    }
    span.end = endOf(parent, index);
    const bool isWritten = entry.mark >= 0 && entry.value->kind != YamlNode::Kind::Absent;
    span.value = isWritten ? std::min(skipProperties(m_source, entry.mark), span.end) : span.end;
    return span;
}

int YamlSpans::contentOf(const YamlEntry& entry) const
{
    const auto& entries = entry.value->entries;
    // The tag or anchor of a first key is none of the map's.
    const bool beginsWithKey = !entries.empty() && entries[0].keyMark == entry.mark;
    return beginsWithKey ? entry.mark : skipProperties(m_source, entry.mark);
}

bool YamlSpans::hasBracket(const YamlEntry& entry) const
{
    const char first = m_source.at(contentOf(entry));
    return entry.value->isFlow && first == (entry.value->kind == YamlNode::Kind::List ? '[' : '{');
}

int YamlSpans::endOf(const YamlEntry& entry) const
{
    if (entry.isAlias) {
        return YamlScan::propertyEnd(m_source, entry.mark);
    }
    if (entry.value->isText()) {
        return textEnd(*entry.value, entry.mark);
    }
    const bool isEmpty = entry.value->entries.empty();
    int end = isEmpty ? contentOf(entry) + 1 : endOf(entry, int(entry.value->entries.size()) - 1);
    if (!hasBracket(entry)) {
        return end;
    }
    while (end < m_source.size() && m_source.at(end) != ']' && m_source.at(end) != '}') {
        const int next = skipSpace(m_source, end);
        end = next == end ? end + 1 : next; // Over a comma, or the sign of an absent value.
    }
    return std::min(end + 1, m_source.size());
}

int YamlSpans::beginOf(const YamlEntry& parent, int index) const
{
    const int content = contentOf(parent);
    if (!hasBracket(parent)) {
        return index == 0 ? content : skipSpace(m_source, endOf(parent, index - 1));
    }
    const int before = index == 0 ? content : skipSpace(m_source, endOf(parent, index - 1));
    return skipSpace(m_source, before + 1); // Behind the bracket or the comma.
}

int YamlSpans::endOf(const YamlEntry& parent, int index) const
{
    const auto& entries = parent.value->entries;
    const YamlEntry& entry = entries[size_t(index)];
    if (entry.mark >= 0) {
        return endOf(entry);
    }
    if (entry.key) {
        bool hasSign = false;
        return behindSign(entry, hasSign);
    }
    int known = index;
    while (known > 0 && entries[size_t(known) - 1].mark < 0) {
        --known;
    }
    int dash = beginOf(parent, known);
    for (; known < index; ++known) {
        dash = skipSpace(m_source, dash + 1);
    }
    return dash + (parent.value->isFlow ? 0 : 1);
}

int YamlSpans::keyEndOf(const YamlEntry& entry) const
{
    const bool isAlias = m_source.at(entry.keyMark) == '*';
    return endOf(YamlEntry{nullptr, entry.key, {}, {}, isAlias, -1, entry.keyMark});
}

int YamlSpans::behindSign(const YamlEntry& entry, bool& hasSign) const
{
    const int keyEnd = keyEndOf(entry);
    const int sign = skipSpace(m_source, keyEnd);
    hasSign = m_source.at(sign) == ':';
    return hasSign ? sign + 1 : keyEnd;
}

int YamlSpans::textEnd(const YamlNode& node, int mark) const
{
    const int content = skipProperties(m_source, mark);
    const char first = m_source.at(content);
    const QByteArray characters = withoutSpaces(node.text);
    if (node.kind == YamlNode::Kind::Absent) {
        return YamlScan::propertiesEnd(m_source, mark);
    }
    if (first == '"' || first == '\'') {
        return YamlScan::quotedAt(m_source, content).end;
    }
    if (first == '|' || first == '>') {
        return blockEnd(characters, content);
    }
    return characters.isEmpty() ? YamlScan::propertiesEnd(m_source, mark)
                                : behind(characters, content);
}

int YamlSpans::blockEnd(const QByteArray& characters, int header) const
{
    int end = m_source.lineEnd(header);
    const QByteArray head = m_source.bytes().mid(header, end - header);
    const bool keepsBlankLines = head.left(3).contains('+');
    if (!characters.isEmpty()) {
        end = m_source.lineEnd(behind(characters, end + 1));
    }
    // Up to the line end before the first byte of anything else.
    int next = end;
    while (keepsBlankLines && SourceText::isSpace(m_source.at(next))) {
        end = m_source.at(next) == '\n' ? next : end;
        ++next;
    }
    return m_source.at(end - 1) == '\r' ? end - 1 : end;
}

/// Behind the last of the characters, with whatever spaces between them.
int YamlSpans::behind(const QByteArray& characters, int offset) const
{
    int left = characters.size();
    int i = offset;
    for (; left > 0 && i < m_source.size(); ++i) {
        left -= SourceText::isSpace(m_source.at(i)) ? 0 : 1;
    }
    return i;
}

} // namespace norvo
