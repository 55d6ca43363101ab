// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlSplices.h"

#include "host/yaml/YamlScan.h"

#include <QRegularExpression>

#include <algorithm>
#include <functional>

namespace norvo {

namespace {

const QString kDefaultStep = "  ";
constexpr int kMaxLine = 100; // Longer ones are broken where nothing says how others are written.
constexpr int kMaxModels = 8; // Entries whose quotes are looked at.

bool isFilled(const YamlEntry& entry)
{
    return !entry.isAlias && !entry.value->isText() && !entry.value->entries.empty();
}

/// The last one that stands before the place, else the first one behind it.
const YamlEntry* nearer(const YamlEntry* known, const YamlEntry* entry, int place)
{
    return !known || entry->mark < place ? entry : known;
}

/// The list or map nearest to the place that has the key, with so many keys above it.
const YamlEntry* findModel(const YamlEntry& parent, const QString& key, int depth, int place,
                           const YamlEntry* known)
{
    for (const YamlEntry& entry : parent.value->entries) {
        if (!isFilled(entry)) {
            continue;
        }
        if (depth > 0) {
            known = findModel(entry, key, depth - 1, place, known);
        } else if (entry.key && entry.key->text.compare(key, Qt::CaseInsensitive) == 0) {
            known = nearer(known, &entry, place);
        }
    }
    return known;
}

} // namespace

std::vector<YamlSplice> YamlSplices::replacements(const YamlEntry& parent, int index,
                                                  const QString& text) const
{
    const YamlSpan span = m_spans.spanOf(parent, index);
    const bool isFlow = parent.value->isFlow;
    const QString old = part(span.value, span.end);
    const QString before = old.isEmpty() ? separator(span, isFlow) : QString();
    std::vector<YamlSplice> splices;
    const auto offer = [&](const QString& written) {
        splices.push_back({span.value, span.end, before + written});
    };
    // A comment behind the sign of a block scalar stays.
    const bool isBlock = !isFlow && (old.startsWith('|') || old.startsWith('>'));
    const QString header = part(span.value, std::min(lineBreak(span.value), span.end));
    static const QRegularExpression comment("\\s+#.*");
    const QString behind = isBlock ? comment.match(header).captured() : QString();
    if (isBlock) {
        int content = m_source.lineEnd(span.value);
        while (SourceText::isSpace(m_source.at(content))) {
            ++content;
        }
        const QString indent(columnOf(content), ' ');
        const auto block = YamlText::block(text, old.at(0) + behind, indent, lineEnd());
        if (block && content < span.end) {
            offer(*block);
        }
    } else if (old.startsWith('"')) {
        offer(YamlText::doubleQuoted(text));
    } else if (old.startsWith('\'')) {
        const auto single = YamlText::singleQuoted(text);
        offer(single ? *single : YamlText::doubleQuoted(text));
    }
    offer(YamlText::leastQuoted(text, isFlow) + behind);
    offer(YamlText::doubleQuoted(text) + behind);
    return splices;
}

std::vector<YamlSplice> YamlSplices::renamings(const YamlEntry& parent, int index,
                                               const QString& key) const
{
    const YamlEntry& entry = parent.value->entries[size_t(index)];
    const int begin = YamlScan::skipProperties(m_source, entry.keyMark);
    const int end = m_spans.keyEndOf(entry);
    const char first = m_source.at(begin);
    std::vector<YamlSplice> splices;
    if (first == '"') {
        splices.push_back({begin, end, YamlText::doubleQuoted(key)});
    } else if (const auto single = YamlText::singleQuoted(key); first == '\'' && single) {
        splices.push_back({begin, end, *single});
    }
    splices.push_back({begin, end, YamlText::leastQuotedKey(key)});
    splices.push_back({begin, end, YamlText::doubleQuoted(key)});
    return splices;
}

YamlSplice YamlSplices::insertion(const YamlEntry& parent, const YamlEntry& entry, int after,
                                  int depth) const
{
    if (parent.value->isFlow) {
        return flowInsertion(parent, entry, after);
    }
    if (after < 0) {
        const int begin = m_spans.spanOf(parent, 0).begin;
        const QString first = blockEntry(entry, {}, {&parent, depth, begin, quotesOf(parent)});
        return {begin, begin, first + lineEnd() + indentOf(parent)};
    }
    const int end = m_spans.spanOf(parent, after).end;
    const QString written =
        blockEntry(entry, indentOf(parent), {&parent, depth, end, quotesOf(parent)});
    const int lineFeed = m_source.lineEnd(end);
    if (lineFeed == m_source.size()) {
        return {lineFeed, lineFeed, lineEnd() + written};
    }
    return {lineFeed + 1, lineFeed + 1, written + lineEnd()};
}

YamlSplice YamlSplices::creation(const YamlEntry* parent, int index, const YamlEntry& entry,
                                 int depth) const
{
    if (!parent) {
        const int end = m_source.size();
        const bool isOnNewLine = end == m_source.start() || m_source.at(end - 1) == '\n';
        return {end, end,
                (isOnNewLine ? QString() : lineEnd()) +
                    blockEntry(entry, {}, {nullptr, 0, end, {}}) + lineEnd()};
    }
    const YamlSpan span = m_spans.spanOf(*parent, index);
    const YamlEntry& target = parent->value->entries[size_t(index)];
    const YamlEntry* const model =
        target.key ? modelOf(target.key->text, {parent, depth - 1, span.begin, {}}) : nullptr;
    const bool isBlock =
        !parent->value->isFlow && span.hasSign && (depth == 1 || (model && !model->value->isFlow));
    if (isBlock) {
        const QString indent = indentOf(*parent) + stepOf(model);
        const int end = lineBreak(span.end);
        const YamlQuotes quotes = quotesOf(*parent);
        const QString written =
            lineEnd() + blockEntry(entry, indent, {nullptr, depth, span.end, quotes});
        if (target.value->kind == YamlNode::Kind::Absent) {
            return {end, end, written};
        }
        const int begin = span.value - (m_source.at(span.value - 1) == ' ' ? 1 : 0);
        return {begin, end, part(span.end, end) + written};
    }
    YamlNode node;
    node.kind = entry.key ? YamlNode::Kind::Map : YamlNode::Kind::List;
    node.entries = {entry};
    const QString written = YamlText::flow(node, quotesOf(*parent));
    return {span.end, span.end, separator(span, parent->value->isFlow) + written};
}

YamlSplice YamlSplices::removal(const YamlEntry& parent, int index) const
{
    const auto& entries = parent.value->entries;
    if (entries.size() == 1) {
        return emptying(parent);
    }
    if (parent.value->isFlow) {
        return flowRemoval(parent, index);
    }
    const YamlSpan span = m_spans.spanOf(parent, index);
    const int lineFeed = m_source.lineEnd(span.end);
    if (isFirstOnLine(span.begin)) {
        const int begin = m_source.lineStart(span.begin);
        // Without a line end at the end of the text, the one before goes.
        return lineFeed < m_source.size() || begin == m_source.start()
                   ? YamlSplice{begin, std::min(lineFeed + 1, m_source.size()), {}}
                   : YamlSplice{lineBreak(begin - 1), lineFeed, {}};
    }
    // It stands behind the dash of a list; comments between it and the next entry stay.
    if (index + 1 < int(entries.size())) {
        const int next = m_spans.spanOf(parent, index + 1).begin;
        const bool isAlone = part(span.end, next).trimmed().isEmpty();
        return {span.begin, isAlone ? next : lineBreak(span.end), {}};
    }
    return {span.begin, span.end, {}};
}

/// Leaves "{}" or "[]" where the only entry is removed.
YamlSplice YamlSplices::emptying(const YamlEntry& parent) const
{
    const YamlSpan span = m_spans.spanOf(parent, 0);
    if (m_spans.hasBracket(parent)) {
        const int next = YamlScan::skipSpace(m_source, span.end);
        return {span.begin, m_source.at(next) == ',' ? next + 1 : span.end, {}};
    }
    const QString empty = parent.value->kind == YamlNode::Kind::List ? "[]" : "{}";
    int begin = span.begin;
    while (begin > m_source.start() && SourceText::isSpace(m_source.at(begin - 1))) {
        --begin;
    }
    // On the line of its key, unless a comment stands between.
    const bool isBehindKey = begin > m_source.start() && m_source.at(begin - 1) == ':' &&
                             begin > m_source.lineStart(begin);
    const bool isOnLine = part(m_source.lineStart(begin), begin).contains('#');
    return isBehindKey && !isOnLine ? YamlSplice{begin, span.end, ' ' + empty}
                                    : YamlSplice{span.begin, span.end, empty};
}

QString YamlSplices::blockEntry(const YamlEntry& entry, const QString& indent,
                                const Spot& spot) const
{
    const YamlNode& value = *entry.value;
    if (!entry.key) {
        return indent + "- " +
               (value.isText() ? YamlText::quoted(value.text, false, spot.quotes)
                               : YamlText::flow(value, spot.quotes));
    }
    QString written = indent + YamlText::quotedKey(entry.key->text, spot.quotes) + ':';
    const YamlEntry* const model = modelOf(entry.key->text, spot);
    const QString below = indent + stepOf(model);
    if (value.isText()) {
        const bool hasLines = m_writesLines && value.text.contains('\n');
        const auto lines =
            hasLines ? YamlText::block(value.text, "|", below, lineEnd()) : std::nullopt;
        return written + ' ' + (lines ? *lines : YamlText::quoted(value.text, false, spot.quotes));
    }
    const QString flow = YamlText::flow(value, spot.quotes);
    const bool isLong =
        written.size() + flow.size() >= kMaxLine || (m_writesLines && flow.contains("\\n"));
    const bool isBlock = !value.entries.empty() && !value.isFlow &&
                         (spot.depth == 0 || (model ? !model->value->isFlow : isLong));
    if (!isBlock) {
        return written + ' ' + flow;
    }
    for (const YamlEntry& one : value.entries) {
        written +=
            lineEnd() + blockEntry(one, below, {nullptr, spot.depth + 1, spot.place, spot.quotes});
    }
    return written;
}

/// The quotes that the first siblings of a new entry have without need.
YamlQuotes YamlSplices::quotesOf(const YamlEntry& parent) const
{
    YamlQuotes quotes;
    bool hasPlainKey = false;
    bool hasPlainText = false;
    const auto quoteAt = [this](int mark) {
        const QChar first = m_source.at(YamlScan::skipProperties(m_source, mark));
        return first == '"' || first == '\'' ? first : QChar();
    };
    const std::function<void(const YamlEntry&)> look = [&](const YamlEntry& entry) {
        if (entry.key) {
            quotes.key = quoteAt(entry.keyMark);
            hasPlainKey = hasPlainKey || quotes.key.isNull();
        }
        if (entry.value->kind == YamlNode::Kind::Text && !entry.isAlias) {
            const QString& text = entry.value->text;
            const QChar quote = quoteAt(entry.mark);
            const bool isNeedless = !quote.isNull() && YamlText::leastQuoted(text, true) == text;
            quotes.text = isNeedless ? quote : quotes.text;
            hasPlainText = hasPlainText ||
                           (quote.isNull() && YamlText::quoted(text, true, {'"', '"'}) != text);
        }
        for (size_t i = 0; i < entry.value->entries.size() && !entry.isAlias; ++i) {
            look(entry.value->entries[i]);
        }
    };
    const auto& entries = parent.value->entries;
    for (size_t i = 0; i < std::min(entries.size(), size_t(kMaxModels)); ++i) {
        look(entries[i]);
    }
    return {hasPlainKey ? QChar() : quotes.key, hasPlainText ? QChar() : quotes.text};
}

/// A list or map whose style one of this key takes: one of the same key and depth, else its
/// nearest neighbour; null without any.
const YamlEntry* YamlSplices::modelOf(const QString& key, const Spot& spot) const
{
    const YamlEntry* model = findModel(m_root, key, spot.depth, spot.place, nullptr);
    if (!model && spot.parent) {
        for (const YamlEntry& entry : spot.parent->value->entries) {
            model = isFilled(entry) ? nearer(model, &entry, spot.place) : model;
        }
    }
    return model;
}

/// How much deeper the entries of the model stand than itself.
QString YamlSplices::stepOf(const YamlEntry* model) const
{
    if (!model || model->value->isFlow) {
        return kDefaultStep;
    }
    const int step = columnOf(m_spans.spanOf(*model, 0).begin) - columnOf(model->keyMark);
    return model->value->kind == YamlNode::Kind::List || step > 0 ? QString(std::max(step, 0), ' ')
                                                                  : kDefaultStep;
}

/// What stands before an entry on a line of its own.
QString YamlSplices::indentOf(const YamlEntry& parent) const
{
    const int begin = m_spans.spanOf(parent, int(parent.value->entries.size()) - 1).begin;
    return QString(columnOf(begin), ' ');
}

/// What stands between a key or dash and a value that is written where none was.
QString YamlSplices::separator(const YamlSpan& span, bool isFlow) const
{
    if (span.hasSign) {
        return " ";
    }
    return isFlow ? QString(": ") : lineEnd() + QString(columnOf(span.begin), ' ') + ": ";
}

bool YamlSplices::isFirstOnLine(int offset) const
{
    return part(m_source.lineStart(offset), offset).trimmed().isEmpty();
}

/// Where the line ends that holds the byte, carriage return included.
int YamlSplices::lineBreak(int offset) const
{
    const int end = m_source.lineEnd(offset);
    return end > m_source.start() && m_source.at(end - 1) == '\r' ? end - 1 : end;
}

QString YamlSplices::part(int begin, int end) const
{
    return QString::fromUtf8(m_source.bytes().mid(begin, end - begin));
}

/// As the first line of the text ends.
QString YamlSplices::lineEnd() const
{
    const int end = m_source.lineEnd(m_source.start());
    return end > 0 && m_source.at(end - 1) == '\r' && end < m_source.size() ? "\r\n" : "\n";
}

} // namespace norvo
