// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/YamlErrors.h"

#include "host/yaml/Quote.h"
#include "host/yaml/YamlBuilder.h"
#include "host/yaml/YamlScan.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace norvo {

namespace {

/// Advice for errors whose place is right as it is; "%1" stands for the character there.
struct Advice
{
    const char* message; ///< What the parser's own begins with; later versions add names to some.
    const char* text;
};

const Advice kAdvice[] = {
    {YAML::ErrorMsg::MAP_VALUE, "no \":\" is expected here; check the indentation, or put a text "
                                "that holds \": \" in quotes"},
    {YAML::ErrorMsg::MAP_KEY, "no key is expected here; check the indentation"},
    {YAML::ErrorMsg::BLOCK_ENTRY, "no list entry is expected here; a list begins on a line of its "
                                  "own, and the text \"-\" needs quotes"},
    {YAML::ErrorMsg::UNKNOWN_TOKEN, "a text without quotes cannot start with \"%1\"; put it in "
                                    "quotes"},
    {YAML::ErrorMsg::FLOW_END, "\"%1\" is not expected here; check that brackets match"},
    {YAML::ErrorMsg::ALIAS_NOT_FOUND, "a name is expected after \"*\"; a text that begins with "
                                      "\"*\" needs quotes"},
    {YAML::ErrorMsg::ANCHOR_NOT_FOUND, "a name is expected after \"&\"; a text that begins with "
                                       "\"&\" needs quotes"},
    {YAML::ErrorMsg::UNKNOWN_ANCHOR, "no anchor of this name is defined above; a text that begins "
                                     "with \"*\" needs quotes"},
    {YAML::ErrorMsg::TAG_WITH_NO_SUFFIX, "a name is expected after \"!\"; a text that begins with "
                                         "\"!\" needs quotes"},
    {YAML::ErrorMsg::DOC_IN_SCALAR, "this line is inside a quoted string; the string is "
                                    "unterminated, or the line needs indentation"},
    {YAML::ErrorMsg::CHAR_IN_BLOCK, "the line must end after \"|\" or \">\"; a text that begins so "
                                    "needs quotes"},
};

bool startsWith(const std::string& message, const char* start)
{
    return message.rfind(start, 0) == 0;
}

QString characterAt(const SourceText& source, int offset)
{
    // Of a character of several bytes, these are four at most.
    return QString::fromUtf8(source.bytes().mid(offset, 4)).left(1);
}

bool isAboutEscape(const std::string& message)
{
    using namespace YAML::ErrorMsg;
    return startsWith(message, INVALID_ESCAPE) || startsWith(message, INVALID_UNICODE) ||
           startsWith(message, INVALID_HEX);
}

/// The tab in the indentation of this line; -1 without one.
int tabInIndentation(const SourceText& source, int offset)
{
    int i = source.lineStart(offset);
    while (source.at(i) == ' ') {
        ++i;
    }
    return source.at(i) == '\t' ? i : -1;
}

/// What has kept a bracket from being closed, as far as the text between the two bytes shows it.
QString adviceOnQuotes(const SourceText& source, int begin, int end)
{
    static const QRegularExpression typographic("[\u201c\u201d\u201e]");
    const auto quote = typographic.match(QString::fromUtf8(source.bytes().mid(begin, end - begin)));
    if (source.at(end - 1) == '\'') {
        return "; within single quotes a ' is written twice";
    }
    if (source.at(end - 1) == '"') {
        return "; within double quotes a \" is written \\\"";
    }
    return quote.hasMatch() ? "; only \" and ' count as quotes, not " + quote.captured()
                            : QString();
}

TextError unclosed(char bracket, const SourceText& source, const YamlBuilder& builder, int noticed)
{
    const bool isList = bracket == '[';
    const int open = builder.openBracket(bracket);
    const int begin = open < 0 ? noticed : open;
    const QString colour = YamlScan::colourInComment(source, begin, noticed);
    const QString reason =
        colour.isEmpty()
            ? QString("; \"%1\" is missing before %2%3")
                  .arg(isList ? "]" : "}", toString(source.placeAt(noticed)),
                       adviceOnQuotes(source, source.lineStart(noticed), noticed))
            : QString(", because \" #\" begins a comment; put %1 in quotes").arg(inQuotes(colour));
    return {source.placeAt(begin), QString("broken YAML: the %1 that opens here is not closed%2")
                                       .arg(isList ? "list" : "map", reason)};
}

} // namespace

TextError toError(const YAML::Exception& exception, const SourceText& source,
                  const YamlBuilder& builder)
{
    using namespace YAML::ErrorMsg;
    const QString broken("broken YAML: %1");
    if (exception.mark.is_null()) {
        return {{}, broken.arg(QString::fromStdString(exception.msg))};
    }
    const int offset = exception.mark.pos + source.start();
    const Place place = source.placeAt(offset);
    const int tab = tabInIndentation(source, offset);
    if (tab >= 0 && (tab < offset || exception.msg == TAB_IN_INDENTATION)) {
        return {source.placeAt(tab), kTabInIndentation};
    }
    if (exception.msg == END_OF_SEQ_FLOW || exception.msg == END_OF_MAP_FLOW) {
        return unclosed(exception.msg == END_OF_SEQ_FLOW ? '[' : '{', source, builder, offset);
    }
    if (exception.msg == END_OF_MAP || exception.msg == END_OF_SEQ) {
        return {place, broken
                           .arg("%1 that begins in %2 is expected here; check the indentation "
                                "and the quotes")
                           .arg(exception.msg == END_OF_MAP ? "the next key of the map"
                                                            : "the next \"- \" of the list",
                                toString(builder.innermost()))};
    }
    if (isAboutEscape(exception.msg)) {
        // The mark is behind it.
        const int backslash = std::max(source.bytes().lastIndexOf('\\', offset - 1), 0);
        return {
            source.placeAt(backslash),
            broken.arg("unknown escape sequence; a backslash in double quotes is written twice")};
    }
    const auto advice =
        std::find_if(std::begin(kAdvice), std::end(kAdvice), [&exception](const Advice& a) {
            return startsWith(exception.msg, a.message);
        });
    return {place,
            broken.arg(advice == std::end(kAdvice)
                           ? QString::fromStdString(exception.msg)
                           : QString(advice->text).replace("%1", characterAt(source, offset)))};
}

} // namespace norvo
