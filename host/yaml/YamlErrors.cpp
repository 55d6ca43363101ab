#include "host/yaml/YamlErrors.h"

#include "host/yaml/YamlBuilder.h"

#include <algorithm>
#include <iterator>

namespace norvo {

namespace {

/// Advice for complaints whose place is right as it is; "%1" stands for the character there.
struct Advice
{
    const char* complaint;
    const char* text;
};

constexpr Advice kAdvice[] = {
    {YAML::ErrorMsg::MAP_VALUE, "no \":\" is expected here; check the indentation, or put a text "
                                "that holds \": \" in quotes"},
    {YAML::ErrorMsg::MAP_KEY, "no key is expected here; check the indentation"},
    {YAML::ErrorMsg::BLOCK_ENTRY, "no list entry is expected here; a list begins on a line of its "
                                  "own, and the text \"-\" needs quotes"},
    {YAML::ErrorMsg::UNKNOWN_TOKEN, "no text begins with \"%1\"; put it in quotes"},
    {YAML::ErrorMsg::FLOW_END, "\"%1\" is not expected here; check that brackets match"},
    {YAML::ErrorMsg::ALIAS_NOT_FOUND, "a name is expected after \"*\"; a text that begins with "
                                      "\"*\" needs quotes"},
    {YAML::ErrorMsg::ANCHOR_NOT_FOUND, "a name is expected after \"&\"; a text that begins with "
                                       "\"&\" needs quotes"},
    {YAML::ErrorMsg::UNKNOWN_ANCHOR, "no anchor of this name stands above; a text that begins with "
                                     "\"*\" needs quotes"},
    {YAML::ErrorMsg::TAG_WITH_NO_SUFFIX, "a name is expected after \"!\"; a text that begins with "
                                         "\"!\" needs quotes"},
    {YAML::ErrorMsg::DOC_IN_SCALAR, "a text in quotes holds this line; it is not closed, or the "
                                    "line needs indentation"},
    {YAML::ErrorMsg::CHAR_IN_BLOCK, "the line must end after \"|\" or \">\"; a text that begins so "
                                    "needs quotes"},
};

QString characterAt(const SourceText& source, int offset)
{
    // Of a character of several bytes, these are four at most.
    return QString::fromUtf8(source.bytes().mid(offset, 4)).left(1);
}

QString inWords(const Place& place)
{
    return QString("line %1, column %2").arg(place.line).arg(place.column);
}

bool isAboutEscape(const std::string& complaint)
{
    using namespace YAML::ErrorMsg;
    return complaint.rfind(INVALID_ESCAPE, 0) == 0 || complaint.rfind(INVALID_UNICODE, 0) == 0 ||
           complaint == INVALID_HEX;
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

Problem unclosed(char bracket, const SourceText& source, const YamlBuilder& builder,
                 const Place& noticed)
{
    const bool isList = bracket == '[';
    const int open = builder.openBracket(bracket);
    return {open < 0 ? noticed : source.placeAt(open),
            QString("broken YAML: the %1 that opens here is not closed; \"%2\" is missing before "
                    "%3")
                .arg(isList ? "list" : "map", isList ? "]" : "}", inWords(noticed))};
}

} // namespace

Problem describe(const YAML::Exception& exception, const SourceText& source,
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
        return {source.placeAt(tab), "a tab stands in the indentation; use blanks"};
    }
    if (exception.msg == END_OF_SEQ_FLOW || exception.msg == END_OF_MAP_FLOW) {
        return unclosed(exception.msg == END_OF_SEQ_FLOW ? '[' : '{', source, builder, place);
    }
    if (exception.msg == END_OF_MAP || exception.msg == END_OF_SEQ) {
        return {place, broken
                           .arg("%1 that begins in %2 is expected here; check the indentation "
                                "and the quotes")
                           .arg(exception.msg == END_OF_MAP ? "the next key of the map"
                                                            : "the next \"- \" of the list",
                                inWords(builder.innermost()))};
    }
    const auto advice = std::find_if(std::begin(kAdvice), std::end(kAdvice),
                                     [&](const Advice& a) { return exception.msg == a.complaint; });
    if (advice != std::end(kAdvice)) {
        const QString text = QString(advice->text).replace("%1", characterAt(source, offset));
        return {place, broken.arg(text)};
    }
    const QString complaint = QString::fromStdString(exception.msg);
    if (isAboutEscape(exception.msg)) {
        // The mark stands behind it.
        const int backslash = std::max(source.bytes().lastIndexOf('\\', offset - 1), 0);
        return {source.placeAt(backslash),
                broken.arg("no character is written like this; a backslash in double quotes is "
                           "written twice")};
    }
    return {place, broken.arg(complaint)};
}

} // namespace norvo
