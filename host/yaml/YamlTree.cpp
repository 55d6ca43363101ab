// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlTree.h"

#include "host/yaml/plain/PlainYaml.h"
#include "host/yaml/YamlBuilder.h"
#include "host/yaml/YamlErrors.h"

#include <yaml-cpp/parser.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <istream>
#include <optional>
#include <streambuf>

namespace norvo {

namespace {

/// Gives the text to the parser in pieces, as long as it reports what it reads.
///
/// The parser reports nothing before it knows whether it is a key, for which it may read on to
/// where the outermost bracket closes, and keeps each token until then. So the text ends for it
/// where too many marks of tokens are not reported yet.
class PieceBuffer : public std::streambuf
{
public:
    PieceBuffer(const SourceText& source, const YamlBuilder& builder)
        : m_source(source), m_builder(builder)
    {}

    /// Why the text ended for the parser before its end.
    const std::optional<TextError>& error() const { return m_error; }

protected:
    int_type underflow() override
    {
        const int begin = m_end;
        const int end = std::min(begin + kPiece, m_source.size());
        const int reported = std::max(m_builder.reported(), m_reported);
        m_marks += marks(begin, end) - marks(m_reported, reported);
        m_reported = reported;
        if (m_marks > kMaxMarks) {
            m_error = TextError{m_source.placeAt(reported),
                                "more than 600,000 brackets, commas and other marks in the list, "
                                "map or text that begins here"};
        } else {
            m_end = end;
        }
        char* const bytes = const_cast<char*>(m_source.bytes().constData());
        setg(bytes + begin, bytes + begin, bytes + m_end);
        return begin == m_end ? traits_type::eof() : traits_type::to_int_type(bytes[begin]);
    }

private:
    static constexpr int kPiece = 64 * 1024;
    static constexpr int kMaxMarks = 600000; ///< 100,000 values never need as many.

    int marks(int begin, int end) const
    {
        const char* const bytes = m_source.bytes().constData();
        return int(std::count_if(bytes + begin, bytes + end,
                                 [](char c) { return std::strchr("[]{},:?#*&!", c); }));
    }

    const SourceText& m_source;
    const YamlBuilder& m_builder;
    int m_end = 0;
    int m_reported = 0;
    int m_marks = 0; ///< From there up to the end.
    std::optional<TextError> m_error;
};

/// Null where the text is not that plain, or not sound: what is wrong first the parser has to say.
YamlNodePtr buildPlain(const SourceText& source)
{
    YamlBuilder builder(source);
    try {
        return PlainYaml(source, builder).read() ? builder.root() : nullptr;
    } catch (const TextError&) {
        return nullptr;
    }
}

std::variant<YamlNodePtr, TextError> build(const SourceText& source)
{
    if (const YamlNodePtr root = buildPlain(source)) {
        return root;
    }
    YamlBuilder builder(source);
    PieceBuffer pieces(source, builder);
    try {
        std::istream stream(&pieces);
        YAML::Parser parser(stream);
        while (parser.HandleNextDocument(builder)) {
        }
    } catch (const TextError& error) {
        return error;
    } catch (const YAML::Exception& exception) {
        if (pieces.error()) {
            return *pieces.error();
        }
        // Of a string without an end the parser says where it begins only when a line end follows;
        // then the builder finds it.
        if (exception.msg == YAML::ErrorMsg::EOF_IN_SCALAR && !source.bytes().endsWith('\n')) {
            return build(SourceText(source.bytes() + '\n'));
        }
        return toError(exception, source, builder);
    } catch (const std::exception& exception) {
        return TextError{{}, QString("the file cannot be read: %1").arg(exception.what())};
    }
    if (pieces.error()) {
        return *pieces.error();
    }
    const YamlNodePtr root = builder.root();
    return root ? root : std::make_shared<const YamlNode>();
}

void collectUses(const YamlEntry& entry, const SourceText& source, const YamlEntry* omitted,
                 YamlTree::Uses& uses)
{
    if (&entry == omitted) {
        return;
    }
    if (entry.key && source.at(entry.keyMark) == '*') {
        uses.insert(entry.key.get(), source.placeAt(entry.keyMark));
    }
    if (entry.isAlias) {
        uses.insert(entry.value.get(), entry.place);
        return;
    }
    for (const YamlEntry& below : entry.value->entries) {
        collectUses(below, source, omitted, uses);
    }
}

} // namespace

Place YamlNode::placeOf(int index, const SourceText& source) const
{
    if (!isCountable || index >= text.size()) {
        return place;
    }
    // Folding changes spaces and line ends only.
    int rest = int(std::count_if(text.cbegin(), text.cbegin() + index, [](QChar c) {
        return !c.isLowSurrogate() && !(c.unicode() < 0x80 && SourceText::isSpace(c.toLatin1()));
    }));
    const bool isSingleQuoted = source.at(begin - 1) == '\'' && !isPlain;
    int i = begin;
    for (;; ++i) {
        const char c = source.at(i);
        if (SourceText::isSpace(c) || (uchar(c) & 0xc0) == 0x80) {
            continue;
        }
        if (rest == 0) {
            return source.placeAt(i);
        }
        --rest;
        if (isSingleQuoted && c == '\'') {
            ++i;
        }
    }
}

std::variant<YamlNodePtr, TextError> YamlTree::read(const SourceText& source)
{
    if (source.size() > kMaxTextSize) {
        return TextError{{}, "the file is larger than 4 MiB"};
    }
    if (const auto bad = source.firstBadByte()) {
        return *bad;
    }
    return build(source);
}

YamlNodePtr YamlTree::text(const QString& text)
{
    auto node = std::make_shared<YamlNode>();
    node->kind = YamlNode::Kind::Text;
    node->text = text;
    return node;
}

YamlNodePtr YamlTree::map(const std::vector<std::pair<QString, YamlNodePtr>>& entries)
{
    auto node = std::make_shared<YamlNode>();
    node->kind = YamlNode::Kind::Map;
    for (const auto& [key, value] : entries) {
        YamlEntry entry;
        entry.key = text(key);
        entry.value = value;
        node->entries.push_back(std::move(entry));
    }
    return node;
}

bool YamlTree::isSame(const YamlNode& a, const YamlNode& b)
{
    const auto isSameEntry = [](const YamlEntry& x, const YamlEntry& y) {
        return x.isAlias == y.isAlias && bool(x.key) == bool(y.key) &&
               (!x.key || isSame(*x.key, *y.key)) && isSame(*x.value, *y.value);
    };
    return &a == &b || (a.kind == b.kind && a.text == b.text &&
                        std::equal(a.entries.cbegin(), a.entries.cend(), b.entries.cbegin(),
                                   b.entries.cend(), isSameEntry));
}

bool YamlTree::isSameWith(const YamlNode& a, const YamlNode& b, const NewTexts& texts)
{
    const auto found = texts.constFind(&a);
    if (found != texts.cend()) {
        return b.kind == YamlNode::Kind::Text && b.text == *found;
    }
    const auto isSameEntry = [&texts](const YamlEntry& x, const YamlEntry& y) {
        return x.isAlias == y.isAlias && bool(x.key) == bool(y.key) &&
               (!x.key || YamlTree::isSame(*x.key, *y.key)) &&
               isSameWith(*x.value, *y.value, texts);
    };
    return a.kind == b.kind && a.text == b.text &&
           std::equal(a.entries.cbegin(), a.entries.cend(), b.entries.cbegin(), b.entries.cend(),
                      isSameEntry);
}

YamlNodePtr YamlTree::changed(const YamlNode& node, const std::vector<int>& indices,
                              const std::function<void(YamlNode&)>& change, size_t level)
{
    auto copy = std::make_shared<YamlNode>(node);
    if (level == indices.size()) {
        change(*copy);
    } else {
        YamlNodePtr& value = copy->entries[size_t(indices[level])].value;
        value = changed(*value, indices, change, level + 1);
    }
    return copy;
}

YamlTree::Uses YamlTree::usesOf(const YamlEntry& root, const SourceText& source,
                                const YamlEntry* omitted)
{
    Uses uses;
    collectUses(root, source, omitted, uses);
    return uses;
}

Place YamlTree::useIn(const YamlEntry& entry, const Uses& uses)
{
    Place use = entry.key ? uses.value(entry.key.get()) : Place();
    if (entry.isAlias) {
        return use;
    }
    use = use.line == 0 ? uses.value(entry.value.get()) : use;
    for (const YamlEntry& below : entry.value->entries) {
        use = use.line == 0 ? useIn(below, uses) : use;
    }
    return use;
}

} // namespace norvo
