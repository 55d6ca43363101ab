// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlTree.h"

#include "host/yaml/YamlBuilder.h"
#include "host/yaml/YamlErrors.h"

#include <yaml-cpp/parser.h>

#include <algorithm>
#include <exception>
#include <istream>
#include <optional>
#include <streambuf>

namespace norvo {

namespace {

/// Gives the text to the parser in pieces. Ahead of each the builder looks for what would cost the
/// parser too much.
class PieceBuffer : public std::streambuf
{
public:
    PieceBuffer(const SourceText& source, YamlBuilder& builder)
        : m_source(source), m_builder(builder)
    {}

    /// What the builder has found; the text ends for the parser there.
    const std::optional<TextError>& error() const { return m_error; }

protected:
    int_type underflow() override
    {
        const int begin = m_end;
        try {
            m_builder.lookAhead(begin);
            m_end = std::min(begin + kPiece, m_source.size());
        } catch (const TextError& error) { // Which not every way through a stream lets through.
            m_error = error;
        }
        char* const bytes = const_cast<char*>(m_source.bytes().constData());
        setg(bytes + begin, bytes + begin, bytes + m_end);
        return begin == m_end ? traits_type::eof() : traits_type::to_int_type(bytes[begin]);
    }

private:
    static constexpr int kPiece = 64 * 1024;

    const SourceText& m_source;
    YamlBuilder& m_builder;
    int m_end = 0;
    std::optional<TextError> m_error;
};

std::variant<YamlNodePtr, TextError> build(const SourceText& source)
{
    YamlBuilder builder(source);
    PieceBuffer pieces(source, builder);
    std::optional<TextError> error;
    try {
        std::istream stream(&pieces);
        YAML::Parser parser(stream);
        while (parser.HandleNextDocument(builder)) {
        }
    } catch (const TextError& refusal) {
        error = refusal;
    } catch (const YAML::Exception& exception) {
        // Of a string without an end the parser says where it begins only when a line end follows;
        // then the builder finds it.
        if (exception.msg == YAML::ErrorMsg::EOF_IN_SCALAR && !source.bytes().endsWith('\n') &&
            !pieces.error()) {
            return build(SourceText(source.bytes() + '\n'));
        }
        error = toError(exception, source, builder);
    } catch (const std::exception& exception) {
        error = TextError{{}, QString("the file cannot be read: %1").arg(exception.what())};
    }
    if (pieces.error() || error) {
        return pieces.error() ? *pieces.error() : *error;
    }
    const YamlNodePtr root = builder.root();
    return root ? root : std::make_shared<const YamlNode>();
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

TextError YamlTree::tooDeep(const Place& place)
{
    return {place, QString("nested deeper than %1 levels").arg(kMaxDepth)};
}

TextError YamlTree::tooMany(const Place& place)
{
    return {place, "more than 100,000 values once aliases are followed"};
}

} // namespace norvo
