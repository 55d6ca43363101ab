// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/SourceText.h"

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <utility>
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
    int keyMark = -1; ///< The offset of the key, tag and anchor included.
    int mark = -1;    ///< The same of the value or its alias; -1 where nothing is written.
};

/// A value of a YAML text.
struct YamlNode
{
    enum class Kind {
        Absent, ///< Nothing is written; reads as an empty text.
        Text,   ///< Verbatim: "no", "1.0" and "~" stay what they are.
        List,
        Map
    };

    Kind kind = Kind::Absent;
    Place place; ///< Where it begins, tag and anchor left out.
    QString text;
    std::vector<YamlEntry> entries;

    bool isText() const { return kind == Kind::Absent || kind == Kind::Text; }
    /// The place of a character of the text; of the text's start where escapes, or the rules of
    /// texts in blocks, keep it from being counted.
    Place placeOf(int index, const SourceText& source) const;

    int begin = 0;            ///< The offset of the text's first character.
    bool isCountable = false; ///< But for spaces, the source holds the text's characters in order.
    bool isPlain = false;     ///< Without quotes.
    bool isFlow = false;      ///< A list or map in brackets, or a pair in a list in brackets.
    int mark = -1; ///< The offset where it begins, tag and anchor included; -1: nothing is written.
};

namespace YamlTree {

constexpr int kMaxDepth = 64;       ///< Levels of lists and maps.
constexpr int kMaxValues = 100000;  ///< Texts, lists and maps, aliases followed; keys left out.
constexpr int kMaxKeyLength = 1000; ///< In characters.

/// The value that the text holds, or the first error. It takes one document of plain UTF-8 text,
/// and keeps to the limits of size, depth and values before it builds anything beyond them.
std::variant<YamlNodePtr, TextError> read(const SourceText& source);

YamlNodePtr text(const QString& text);
/// A map of keys and values.
YamlNodePtr map(const std::vector<std::pair<QString, YamlNodePtr>>& entries);
/// Whether both hold the same values, by whatever style they are written.
bool isSame(const YamlNode& a, const YamlNode& b);

using NewTexts = QHash<const YamlNode*, QString>;
/// Whether `b` is `a` with other texts in these of its nodes.
bool isSameWith(const YamlNode& a, const YamlNode& b, const NewTexts& texts);
/// The tree with the value at these indices changed; the rest is shared.
YamlNodePtr changed(const YamlNode& node, const std::vector<int>& indices,
                    const std::function<void(YamlNode&)>& change, size_t level = 0);

using Uses = QHash<const YamlNode*, Place>;
/// Which nodes aliases use, and where; those in `omitted` left out.
Uses usesOf(const YamlEntry& root, const SourceText& source, const YamlEntry* omitted = nullptr);
/// The place of a use of what stands in this entry; unknown without any.
Place useIn(const YamlEntry& entry, const Uses& uses);

} // namespace YamlTree

} // namespace norvo
