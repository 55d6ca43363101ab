// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlReread.h"

#include <algorithm>

namespace norvo {

namespace {

constexpr int kMaxHeight = YamlTree::kMaxDepth - 4;
constexpr int kMaxMarks = 600000; // As many as no list or map can have too many of.

/// Whether a colon stands behind the key. The parser takes a text without one for a key where what
/// follows lets it, be that far away.
bool hasColon(const YamlEntry& entry, const SourceText& source)
{
    const QByteArray key = entry.key->text.toUtf8() + ':';
    return source.bytes().mid(entry.keyMark, key.size()) == key;
}

bool isPlainKey(const YamlEntry& entry, const SourceText& source)
{
    return entry.key->kind == YamlNode::Kind::Text && source.at(entry.keyMark) != '*' &&
           (entry.value->kind != YamlNode::Kind::Absent || hasColon(entry, source));
}

/// Whether the values below are few, not deep, and neither aliases nor keys given twice.
bool isPlainTree(const YamlNode& node, const SourceText& source, int height, int& values)
{
    ++values;
    return height < kMaxHeight && values < YamlTree::kMaxValues / 2 &&
           std::all_of(node.entries.cbegin(), node.entries.cend(), [&](const YamlEntry& entry) {
               return !entry.isAlias && entry.earlier.line == 0 &&
                      (!entry.key || isPlainKey(entry, source)) &&
                      isPlainTree(*entry.value, source, height + 1, values);
           });
}

bool isBlock(const YamlNode& node)
{
    return !node.isText() && !node.isFlow && !node.entries.empty();
}

/// Of a tag or an anchor, which may be that of the whole list or map.
bool isProperty(char first)
{
    return first == '!' || first == '&';
}

/// Whether a line is one that ends or begins a document, or holds a mark that counts as nothing
/// only where a text begins.
bool hasDocumentMarks(const QByteArray& text)
{
    for (const char* mark : {"---", "...", "%", "\xef\xbb\xbf"}) {
        if (text.startsWith(mark) || text.contains(QByteArray("\n") + mark)) {
            return true;
        }
    }
    return false;
}

/// Whether the last of all values is absent: a text that ends so may have been given a meaning that
/// it has at the end of all texts only.
bool endsAbsent(const YamlNode& node)
{
    return node.entries.empty() ? node.kind == YamlNode::Kind::Absent
                                : endsAbsent(*node.entries.back().value);
}

int indexAt(const std::vector<int>& lines, int offset)
{
    const auto next = std::upper_bound(lines.cbegin(), lines.cend(), offset);
    return std::max(0, int(next - lines.cbegin()) - 1);
}

} // namespace

YamlReread::YamlReread(const SourceText& before, const YamlEntry& root, const SourceText& after,
                       int begin, int oldEnd, int newEnd)
    : m_before(before),
      m_root(root),
      m_after(after),
      m_begin(begin),
      m_oldEnd(oldEnd),
      m_bytes(newEnd - oldEnd),
      m_lines(after.bytes().mid(begin, newEnd - begin).count('\n') -
              before.bytes().mid(begin, oldEnd - begin).count('\n')),
      m_isOfLines(before.lineStart(oldEnd) == oldEnd && after.lineStart(newEnd) == newEnd)
{}

YamlNodePtr YamlReread::tree() const
{
    Range range;
    if (!isSimple() || !findRange(m_root, m_before.size(), range)) {
        return nullptr;
    }
    // Deeper, where the place lies inside of one list or map.
    if (range.first == range.last) {
        Range below;
        const YamlEntry& entry = range.parent->value->entries[size_t(range.first)];
        range = findRange(entry, range.end, below) ? below : range;
    }
    const YamlNodePtr read = readRange(range);
    return read && fits(*read, range) ? spliced(range, *read) : nullptr;
}

bool YamlReread::isSimple() const
{
    int values = 0;
    return m_after.size() < kMaxMarks && isPlainTree(*m_root.value, m_before, 0, values);
}

/// The line that the entry begins; -1 where something else does.
int YamlReread::lineOf(const YamlEntry& entry) const
{
    const int mark = entry.key ? entry.keyMark : entry.mark;
    if (mark < 0) {
        return -1;
    }
    const int line = m_before.lineStart(mark);
    int begin = line;
    while (m_before.at(begin) == ' ') {
        ++begin;
    }
    const bool isIt = entry.key ? begin == mark : m_before.at(begin) == '-' && begin < mark;
    return isIt ? line : -1;
}

/// The lines of the entries; false where one does not begin a line.
bool YamlReread::isLines(const YamlEntry& parent, std::vector<int>& lines) const
{
    for (const YamlEntry& entry : parent.value->entries) {
        lines.push_back(lineOf(entry));
        if (lines.back() < 0) {
            return false;
        }
    }
    return true;
}

/// `end`: of the lines of the parent.
bool YamlReread::findRange(const YamlEntry& parent, int end, Range& range) const
{
    std::vector<int> lines;
    if (!isBlock(*parent.value) || !isLines(parent, lines) || m_begin < lines.front()) {
        return false;
    }
    const bool isLine = m_before.lineStart(m_begin) == m_begin;
    range.parent = &parent;
    range.first = indexAt(lines, isLine ? m_begin - 1 : m_begin);
    range.last = std::max(range.first, indexAt(lines, m_isOfLines ? m_oldEnd - 1 : m_oldEnd));
    range.begin = lines[size_t(range.first)];
    const bool isLast = range.last + 1 == int(lines.size());
    range.end = isLast ? end : lines[size_t(range.last) + 1];
    return m_oldEnd <= range.end;
}

YamlNodePtr YamlReread::readRange(const Range& range) const
{
    const QByteArray text = m_after.bytes().mid(range.begin, range.end + m_bytes - range.begin);
    if (hasDocumentMarks(text)) {
        return nullptr;
    }
    const SourceText source(text);
    const auto tree = YamlTree::read(source);
    const auto* const read = std::get_if<YamlNodePtr>(&tree);
    const bool isOwn = read && isBlock(**read) && !isProperty(source.at((*read)->mark));
    int values = 0;
    return isOwn && isPlainTree(**read, source, 0, values) ? *read : nullptr;
}

/// Whether what has been read by itself is the same where it stands.
bool YamlReread::fits(const YamlNode& read, const Range& range) const
{
    const YamlNode& old = *range.parent->value;
    if (read.kind != old.kind || read.place.column != old.place.column || endsAbsent(read)) {
        return false;
    }
    const YamlEntry& first = old.entries[0];
    if (range.first == 0 &&
        ((first.key && old.mark != first.keyMark) || m_before.lineStart(old.mark) != range.begin)) {
        return false; // It has a tag or an anchor.
    }
    for (size_t i = 0; i < old.entries.size(); ++i) {
        const bool isOutside = int(i) < range.first || int(i) > range.last;
        for (const YamlEntry& entry : read.entries) {
            if (isOutside && entry.key && entry.key->text == old.entries[i].key->text) {
                return false; // Given twice.
            }
        }
    }
    return true;
}

YamlNodePtr YamlReread::spliced(const Range& range, const YamlNode& read) const
{
    const int line = m_before.placeAt(range.begin).line - 1;
    auto node = std::make_shared<YamlNode>(*range.parent->value);
    node->entries.clear();
    const auto& old = range.parent->value->entries;
    node->entries.insert(node->entries.end(), old.begin(), old.begin() + range.first);
    for (const YamlEntry& entry : read.entries) {
        node->entries.push_back(moved(entry, range.begin, line));
    }
    for (size_t i = size_t(range.last) + 1; i < old.size(); ++i) {
        node->entries.push_back(moved(old[i], m_bytes, m_lines));
    }
    if (range.first == 0) {
        node->mark = read.mark + range.begin;
        node->place.line = read.place.line + line;
    }
    if (range.parent == &m_root) {
        return node;
    }
    auto root = std::make_shared<YamlNode>(*m_root.value);
    bool isBehind = false;
    for (YamlEntry& entry : root->entries) {
        if (entry.value == range.parent->value) {
            entry.value = node;
            entry.mark = node->mark;
            entry.place = node->place;
            isBehind = true;
        } else if (isBehind) {
            entry = moved(entry, m_bytes, m_lines);
        }
    }
    return root;
}

YamlNodePtr YamlReread::moved(const YamlNodePtr& node, int bytes, int lines) const
{
    auto copy = std::make_shared<YamlNode>(*node);
    copy->place.line += copy->place.line > 0 ? lines : 0;
    copy->begin += copy->kind == YamlNode::Kind::Text ? bytes : 0;
    copy->mark += copy->mark >= 0 ? bytes : 0;
    for (YamlEntry& entry : copy->entries) {
        entry = moved(entry, bytes, lines);
    }
    return copy;
}

YamlEntry YamlReread::moved(const YamlEntry& entry, int bytes, int lines) const
{
    YamlEntry copy = entry;
    copy.key = entry.key ? moved(entry.key, bytes, lines) : nullptr;
    copy.value = moved(entry.value, bytes, lines);
    copy.place.line += copy.place.line > 0 ? lines : 0;
    copy.keyMark += copy.keyMark >= 0 ? bytes : 0;
    copy.mark += copy.mark >= 0 ? bytes : 0;
    return copy;
}

} // namespace norvo
