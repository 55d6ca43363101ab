// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlTree.h"

namespace norvo {

/// Where one entry of a list or a map stands, as offsets.
struct YamlSpan
{
    int begin = 0; ///< Of the dash, the "?" or the key; of the value in a list in brackets.
    int value = 0; ///< Where the value begins behind tag and anchor, or would begin if absent.
    int end = 0;   ///< Behind the value; in a block scalar before the last line's end.
    bool hasSign = false; ///< The colon or the dash before the value is written.
};

/// Finds what a tree does not keep, the ends of values, in the text that the tree was read from.
class YamlSpans
{
public:
    explicit YamlSpans(const SourceText& source) : m_source(source) {}

    /// Of an entry of the list or map that `parent` holds.
    YamlSpan spanOf(const YamlEntry& parent, int index) const;
    /// Where the list or map begins behind tag and anchor.
    int contentOf(const YamlEntry& entry) const;
    /// Behind the value; not for one that is absent.
    int endOf(const YamlEntry& entry) const;
    int keyEndOf(const YamlEntry& entry) const; ///< Behind the key of an entry of a map.
    /// True for a list or a map in brackets, false for a pair in brackets without its own.
    bool hasBracket(const YamlEntry& entry) const;

private:
    int beginOf(const YamlEntry& parent, int index) const;
    int endOf(const YamlEntry& parent, int index) const;
    int behindSign(const YamlEntry& entry, bool& hasSign) const;
    int textEnd(const YamlNode& node, int mark) const;
    int blockEnd(const QByteArray& characters, int header) const;
    int behind(const QByteArray& characters, int offset) const;

    const SourceText& m_source;
};

} // namespace norvo
