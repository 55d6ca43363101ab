#pragma once

#include "host/yaml/SourceText.h"

#include <QString>

#include <memory>
#include <variant>
#include <vector>

namespace norvo {

struct YamlNode;
using YamlNodePtr = std::shared_ptr<const YamlNode>; ///< Never null; aliases share their node.

/// One entry of a list or a map.
struct YamlEntry
{
    YamlNodePtr key; ///< Null in a list.
    YamlNodePtr value;
    Place place;   ///< Of the value or its alias; of the key or the dash where nothing follows it.
    Place earlier; ///< Of the same key earlier in the map; unknown when there is none.
    bool isAlias = false;
};

/// A value of a YAML text.
struct YamlNode
{
    enum class Kind {
        Absent, ///< Nothing is written; reads as an empty text.
        Text,   ///< Letter by letter: "no", "1.0" and "~" stay what they are.
        List,
        Map
    };

    Kind kind = Kind::Absent;
    Place place; ///< Where it begins, tag and anchor left out.
    QString text;
    std::vector<YamlEntry> entries;

    bool isText() const { return kind == Kind::Absent || kind == Kind::Text; }
    /// The place of a character of the text; of the text's start where escapes, or the rules of
    /// texts in blocks, keep that from being told by counting.
    Place placeOf(int index, const SourceText& source) const;

    int begin = 0;            ///< The offset of the text's first character.
    bool isCountable = false; ///< But for blanks, the source holds the text's characters in order.
    bool isPlain = false;     ///< Without quotes.
};

namespace YamlTree {

constexpr int kDeepest = 64;        ///< Levels of lists and maps.
constexpr int kMostValues = 100000; ///< Texts, lists and maps, aliases followed; keys left out.
constexpr int kLongestKey = 1000;   ///< In characters.

/// The value that the text holds. It takes one document, and keeps to the limits before it
/// builds anything beyond them. The text must be free of bad bytes.
std::variant<YamlNodePtr, Problem> read(const SourceText& source);

} // namespace YamlTree

} // namespace norvo
