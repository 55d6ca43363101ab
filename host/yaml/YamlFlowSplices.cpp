// SPDX-License-Identifier: GPL-3.0-or-later

// The splices of lists and maps in brackets.
#include "host/yaml/YamlScan.h"
#include "host/yaml/YamlSplices.h"

#include <algorithm>

namespace norvo {

YamlSplice YamlSplices::flowInsertion(const YamlEntry& parent, const YamlEntry& entry,
                                      int after) const
{
    const YamlQuotes quotes = quotesOf(parent);
    const QString written = (entry.key ? YamlText::quotedKey(entry.key->text, quotes) + ": " : "") +
                            YamlText::flow(*entry.value, quotes);
    if (after < 0) {
        const bool isEmpty = parent.value->entries.empty();
        const int begin = isEmpty ? m_spans.contentOf(parent) + 1 : m_spans.spanOf(parent, 0).begin;
        const bool isOnLine = isEmpty || !isFirstOnLine(begin);
        const QString behind = isOnLine ? QString(" ") : lineEnd() + QString(columnOf(begin), ' ');
        return {begin, begin, isEmpty ? written : written + ',' + behind};
    }
    const YamlSpan span = m_spans.spanOf(parent, after);
    const bool hasOwnLine = isFirstOnLine(span.begin);
    const QString before =
        hasOwnLine ? lineEnd() + QString(columnOf(span.begin), ' ') : QString(" ");
    int next = span.end;
    while (m_source.at(next) == ' ') {
        ++next;
    }
    const bool hasComma = m_source.at(next) == ',';
    const int behind = hasComma ? next + 1 : span.end;
    // A comment that ends the line belongs to the entry before.
    const int lineBreakHere = lineBreak(behind);
    const QString rest = part(behind, lineBreakHere);
    const bool isLineOver = rest.trimmed().isEmpty() || rest.trimmed().startsWith('#');
    const int end = hasOwnLine && isLineOver ? lineBreakHere : behind;
    const QString kept = part(behind, end);
    return {behind, end, hasComma ? kept + before + written + ',' : ',' + kept + before + written};
}

YamlSplice YamlSplices::flowRemoval(const YamlEntry& parent, int index) const
{
    const YamlSpan span = m_spans.spanOf(parent, index);
    const int next = YamlScan::skipSpace(m_source, span.end);
    const bool hasComma = m_source.at(next) == ',';
    if (!hasComma) {
        const int before = m_spans.spanOf(parent, index - 1).end;
        const bool hasComment = part(before, span.begin).contains('#');
        return {hasComment ? span.begin : before, span.end, {}};
    }
    const int lineFeed = m_source.lineEnd(next);
    const QString rest = part(next + 1, lineFeed).trimmed();
    if (isFirstOnLine(span.begin) && (rest.isEmpty() || rest.startsWith('#'))) {
        return {m_source.lineStart(span.begin), std::min(lineFeed + 1, m_source.size()), {}};
    }
    const int behind = m_source.at(next + 1) == ' ' ? next + 2 : next + 1;
    return {span.begin, behind, {}};
}

std::optional<YamlSplice> YamlSplices::unfolding(const YamlEntry& parent, int index) const
{
    const YamlEntry& map = parent.value->entries[size_t(index)];
    if (parent.value->isFlow || !map.value->isFlow || map.value->kind != YamlNode::Kind::Map ||
        map.value->entries.empty()) {
        return std::nullopt;
    }
    const YamlSpan span = m_spans.spanOf(parent, index);
    if (part(span.value, span.end).contains('\n')) {
        return std::nullopt;
    }
    const YamlEntry* model = nullptr;
    for (const YamlEntry& sibling : parent.value->entries) {
        const bool isModel = !sibling.isAlias && !sibling.value->isText() &&
                             !sibling.value->isFlow && !sibling.value->entries.empty();
        model = isModel ? &sibling : model;
    }
    const QString indent = indentOf(parent) + stepOf(model);
    QString written;
    for (int i = 0; i < int(map.value->entries.size()); ++i) {
        const YamlSpan entry = m_spans.spanOf(map, i);
        written += lineEnd() + indent + part(entry.begin, entry.end);
    }
    // A comment stays behind the key.
    const int begin = span.value - (m_source.at(span.value - 1) == ' ' ? 1 : 0);
    const int end = lineBreak(span.end);
    return YamlSplice{begin, end, part(span.end, end) + written};
}

} // namespace norvo
