// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlBuilder.h"

#include "host/yaml/YamlErrors.h"
#include "host/yaml/YamlScan.h"

#include <algorithm>
#include <string>
#include <utility>

namespace norvo {

using YamlScan::isFlowMark;
using YamlScan::skipProperties;

namespace {

/// Qt takes a byte order mark at the beginning for none of the text's characters.
QString textOf(const std::string& utf8)
{
    const std::string mark = "\xef\xbb\xbf";
    std::size_t begin = 0;
    while (utf8.compare(begin, mark.size(), mark) == 0) {
        begin += mark.size();
    }
    return QString(int(begin / mark.size()), QChar::ByteOrderMark) +
           QString::fromUtf8(utf8.data() + begin, int(utf8.size() - begin));
}

} // namespace

int YamlBuilder::openBracket(char bracket) const
{
    const auto level =
        std::find_if(m_levels.crbegin(), m_levels.crend(), [this, bracket](const Level& open) {
            return open.bracket >= 0 && m_source.at(open.bracket) == bracket;
        });
    return level == m_levels.crend() ? -1 : level->bracket;
}

Place YamlBuilder::innermost() const
{
    return m_levels.empty() ? Place() : m_levels.back().node->place;
}

void YamlBuilder::OnDocumentStart(const YAML::Mark& mark)
{
    if (m_hasDocument) {
        const int offset = mark.pos + m_source.start();
        const bool isMarked = m_source.bytes().mid(offset, 3) == "---";
        throw TextError{m_source.placeAt(offset),
                        isMarked ? "a second document begins here; a file holds one, without this "
                                   "\"---\""
                                 : "broken YAML: this is outside of the list or map above it; "
                                   "check the indentation and the quotes"};
    }
    m_hasDocument = true;
}

void YamlBuilder::OnNull(const YAML::Mark& mark, YAML::anchor_t anchor)
{
    const int offset = enter(mark);
    const int content = skipProperties(m_source, offset);
    const QString word = nullWordAt(content);
    const bool isKey = isAtKey();
    const bool isAbsent = word.isEmpty() || (!m_levels.empty() && m_levels.back().key && !isKey &&
                                             m_levels.back().keyMark == offset);
    const bool isAtMark = isKey || anchor != 0;
    const Place placeIfAbsent = isAtMark ? m_source.placeAt(offset) : placeOfAbsent(offset);
    Node node = isAbsent ? std::make_shared<YamlNode>() : newText(content, word);
    if (isAbsent) {
        node->place = placeIfAbsent;
    } else if (!isKey) {
        const Node parent = m_levels.empty() ? nullptr : m_levels.back().node;
        m_unsure = Unsure{node, parent, placeIfAbsent, offset, content};
    }
    if (!isKey) {
        count(1, offset);
    }
    node->mark = isAbsent && anchor == 0 ? -1 : offset;
    remember(anchor, node, 1, 0);
    add(node, offset, node->place);
}

void YamlBuilder::OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor)
{
    const int offset = enter(mark);
    const Place place = m_source.placeAt(offset);
    const Anchored target = anchor < m_anchors.size() ? m_anchors[anchor] : Anchored();
    if (!target.node) {
        throw TextError{place, "this alias is inside the value that it names"};
    }
    const bool isTextKey = isAtKey() && target.node->isText();
    count(isTextKey ? 0 : target.values, offset);
    if (!m_levels.empty()) {
        Level& level = m_levels.back();
        if (level.depth + target.height > YamlTree::kMaxDepth) {
            throw TextError{place,
                            QString("nested deeper than %1 levels once this alias is followed")
                                .arg(YamlTree::kMaxDepth)};
        }
        level.height = std::max(level.height, 1 + target.height);
    }
    add(target.node, offset, place, true);
}

void YamlBuilder::OnScalar(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                           const std::string& value)
{
    const int offset = enter(mark);
    const int content = skipProperties(m_source, offset);
    const QString text = textOf(value);
    // A tag without a text reads as an empty one; what follows belongs to another value.
    const bool isTagAlone = value.empty() && content != offset;
    const Node node = newText(isTagAlone ? offset : content, text);
    if (!isTagAlone) {
        describeText(*node, content);
    }
    if (!isAtKey()) {
        count(1, offset);
    }
    node->mark = offset;
    remember(anchor, node, 1, 0);
    add(node, offset, node->place);
}

void YamlBuilder::OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                                  YAML::EmitterStyle::value style)
{
    begin(YamlNode::Kind::List, mark, anchor, style);
}

void YamlBuilder::OnMapStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                             YAML::EmitterStyle::value style)
{
    begin(YamlNode::Kind::Map, mark, anchor, style);
}

/// What every event with a mark begins with; gives the mark's offset.
int YamlBuilder::enter(const YAML::Mark& mark)
{
    // Marks count lines and columns in bytes, and lose them at the end of a text; their position
    // counts the bytes behind a byte order mark.
    const int offset = mark.pos + m_source.start();
    settleUnsure(offset);
    refuseTab(offset);
    m_reported = offset;
    return offset;
}

/// The parser reports "~" and "null" by the same event as a value that is absent, and marks an
/// absent value with the place of the token that follows it. So of "a:" above "null: x" the first
/// event, for what is absent behind "a", stands at the word "null", as it does of "a: null". Only
/// the next event tells them apart: one at the word itself says that the word was no value but a
/// key.
void YamlBuilder::settleUnsure(int offset)
{
    if (m_unsure && (offset == m_unsure->mark || offset == m_unsure->offset)) {
        YamlNode& node = *m_unsure->node;
        node = YamlNode();
        node.place = m_unsure->placeIfAbsent;
        if (m_unsure->parent) {
            m_unsure->parent->entries.back().place = node.place;
            m_unsure->parent->entries.back().mark = node.mark;
        }
    }
    m_unsure.reset();
}

/// The parser takes some tabs in indentation for spaces and gets the levels wrong.
void YamlBuilder::refuseTab(int offset)
{
    const int lineStart = m_source.lineStart(offset);
    if (lineStart == m_lastLineStart) {
        return;
    }
    m_lastLineStart = lineStart;
    for (int i = lineStart; i < offset && SourceText::isSpace(m_source.at(i)); ++i) {
        if (m_source.at(i) == '\t') {
            throw TextError{m_source.placeAt(i), kTabInIndentation};
        }
    }
}

bool YamlBuilder::isAtKey() const
{
    return !m_levels.empty() && m_levels.back().node->kind == YamlNode::Kind::Map &&
           !m_levels.back().key;
}

/// The word for "nothing" that is written here; empty when there is none.
QString YamlBuilder::nullWordAt(int offset) const
{
    for (const char* word : {"~", "null", "Null", "NULL"}) {
        const int length = int(qstrlen(word));
        const char next = m_source.at(offset + length);
        const bool isWhole =
            next == '\0' || next == ':' || SourceText::isSpace(next) || isFlowMark(next);
        if (isWhole && m_source.bytes().mid(offset, length) == word) {
            return word;
        }
    }
    return {};
}

/// The key that lacks a value, or the dash; failing that the mark itself.
Place YamlBuilder::placeOfAbsent(int offset) const
{
    if (m_levels.empty()) {
        return m_source.placeAt(offset);
    }
    const Level& level = m_levels.back();
    if (level.node->kind == YamlNode::Kind::Map) {
        return m_source.placeAt(level.keyMark);
    }
    if (m_source.at(skipProperties(m_source, level.mark)) == '-') {
        // Between the dash and the mark are spaces and comments only.
        for (int lineEnd = offset; lineEnd > level.mark;) {
            const int lineStart = m_source.lineStart(lineEnd - 1);
            const QByteArray line = m_source.bytes().mid(lineStart, lineEnd - lineStart);
            const int comment = line.indexOf('#');
            const int dash = (comment < 0 ? line : line.left(comment)).lastIndexOf('-');
            if (dash >= 0) {
                return m_source.placeAt(lineStart + dash);
            }
            lineEnd = lineStart;
        }
    }
    return m_source.placeAt(offset);
}

YamlBuilder::Node YamlBuilder::newText(int offset, const QString& text) const
{
    auto node = std::make_shared<YamlNode>();
    node->kind = YamlNode::Kind::Text;
    node->text = text;
    node->begin = offset;
    node->place = m_source.placeAt(offset);
    return node;
}

/// How the text is written; refuses a string that does not end, which the parser may let pass at
/// the end of the file.
void YamlBuilder::describeText(YamlNode& node, int offset) const
{
    const char first = m_source.at(offset);
    if (first == '"' || first == '\'') {
        const YamlScan::Quoted quoted = YamlScan::quotedAt(m_source, offset);
        if (!quoted.isClosed) {
            throw TextError{node.place,
                            QString("broken YAML: unterminated quoted string; %1 is missing")
                                .arg(first == '"' ? "'\"'" : "\"'\"")};
        }
        node.begin = offset + 1;
        node.isCountable = !quoted.hasEscapes;
    } else {
        node.isPlain = first != '|' && first != '>';
        node.isCountable = node.isPlain;
    }
}

void YamlBuilder::count(int values, int offset)
{
    m_values += values;
    if (m_values > YamlTree::kMaxValues) {
        throw TextError{m_source.placeAt(offset),
                        "more than 100,000 values once aliases are followed"};
    }
}

void YamlBuilder::begin(YamlNode::Kind kind, const YAML::Mark& mark, YAML::anchor_t anchor,
                        YAML::EmitterStyle::value style)
{
    const int offset = enter(mark);
    Level level;
    level.node = std::make_shared<YamlNode>();
    level.node->kind = kind;
    level.node->isFlow = style == YAML::EmitterStyle::Flow;
    level.node->mark = offset;
    const int content = skipProperties(m_source, offset);
    level.node->place = m_source.placeAt(content);
    if (m_source.at(content) == (kind == YamlNode::Kind::List ? '[' : '{')) {
        level.bracket = content;
    }
    level.anchor = anchor;
    level.mark = offset;
    level.valuesBefore = m_values;
    level.depth = 1;
    if (!m_levels.empty()) {
        // Of a bracket that never closes the parser makes two levels at one place.
        const Level& outer = m_levels.back();
        level.depth = outer.depth + (outer.mark == offset ? 0 : 1);
    }
    if (level.depth > YamlTree::kMaxDepth) {
        throw TextError{m_source.placeAt(offset),
                        QString("nested deeper than %1 levels").arg(YamlTree::kMaxDepth)};
    }
    count(1, offset);
    remember(anchor, nullptr, 0, 0);
    add(level.node, offset, level.node->place);
    m_levels.push_back(std::move(level));
}

void YamlBuilder::end()
{
    const Level level = std::move(m_levels.back());
    m_levels.pop_back();
    remember(level.anchor, level.node, m_values - level.valuesBefore, level.height);
    if (!m_levels.empty()) {
        m_levels.back().height = std::max(m_levels.back().height, 1 + level.height);
    }
}

void YamlBuilder::add(const YamlNodePtr& node, int mark, const Place& place, bool isAlias)
{
    if (m_levels.empty()) {
        m_root = node;
        return;
    }
    Level& level = m_levels.back();
    if (isAtKey()) {
        if (node->text.size() > YamlTree::kMaxKeyLength) {
            throw TextError{
                place, QString("a key has %1 characters at most").arg(YamlTree::kMaxKeyLength)};
        }
        level.key = node;
        level.keyMark = mark;
        return;
    }
    YamlEntry entry{std::exchange(level.key, nullptr), node, place, {}, isAlias, level.keyMark,
                    isAlias ? mark : node->mark};
    if (entry.key && entry.key->isText()) {
        const auto known = level.keys.constFind(entry.key->text);
        if (known != level.keys.constEnd()) {
            entry.earlier = *known;
        } else {
            level.keys.insert(entry.key->text, entry.key->place);
        }
    }
    level.node->entries.push_back(std::move(entry));
}

void YamlBuilder::remember(YAML::anchor_t anchor, const YamlNodePtr& node, int values, int height)
{
    if (anchor == 0) {
        return;
    }
    if (anchor >= m_anchors.size()) {
        m_anchors.resize(anchor + 1);
    }
    m_anchors[anchor] = Anchored{node, values, height};
}

} // namespace norvo
