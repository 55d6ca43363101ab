#include "host/yaml/YamlTree.h"

#include "host/yaml/YamlBuilder.h"
#include "host/yaml/YamlErrors.h"

#include <yaml-cpp/parser.h>

#include <algorithm>
#include <exception>
#include <sstream>

namespace norvo {

namespace {

std::variant<YamlNodePtr, Problem> build(const SourceText& source)
{
    YamlBuilder builder(source);
    try {
        std::istringstream stream(source.bytes().toStdString());
        YAML::Parser parser(stream);
        while (parser.HandleNextDocument(builder)) {
        }
    } catch (const Problem& problem) {
        return problem;
    } catch (const YAML::Exception& exception) {
        // Only where a line end follows does the parser let the text through that never closes,
        // for the builder to tell where it opens.
        if (exception.msg == YAML::ErrorMsg::EOF_IN_SCALAR && !source.bytes().endsWith('\n')) {
            return build(SourceText(source.bytes() + '\n'));
        }
        return describe(exception, source, builder);
    } catch (const std::exception& exception) {
        return Problem{{}, QString("the file cannot be read: %1").arg(exception.what())};
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
    // Folding changes blanks and line ends only.
    int rest = int(std::count_if(text.cbegin(), text.cbegin() + index, [](QChar c) {
        return !c.isLowSurrogate() && !(c.unicode() < 0x80 && SourceText::isBlank(c.toLatin1()));
    }));
    const bool isSingleQuoted = source.at(begin - 1) == '\'' && !isPlain;
    int i = begin;
    for (;; ++i) {
        const char c = source.at(i);
        if (SourceText::isBlank(c) || (uchar(c) & 0xc0) == 0x80) {
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

std::variant<YamlNodePtr, Problem> YamlTree::read(const SourceText& source)
{
    return build(source);
}

} // namespace norvo
