// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlTree.h"

namespace norvo {

/// Reads a text that differs in one place from one whose tree is known: what stands around the
/// place, and no more.
class YamlReread
{
public:
    /// The bytes of `before` from `begin` up to `oldEnd` are in `after` those up to `newEnd`.
    YamlReread(const SourceText& before, const YamlEntry& root, const SourceText& after, int begin,
               int oldEnd, int newEnd);

    /// The tree of `after`, as YamlTree::read() would give it; null where that cannot be known
    /// without reading all of it, or it cannot be read.
    YamlNodePtr tree() const;

private:
    /// Entries of a list or map that stand on lines of their own, first to last.
    struct Range
    {
        const YamlEntry* parent = nullptr;
        int first = 0;
        int last = 0;
        int begin = 0; ///< Of the first one's line.
        int end = 0;   ///< Of the lines of the last one.
    };

    bool isSimple() const;
    bool isLines(const YamlEntry& parent, std::vector<int>& lines) const;
    int lineOf(const YamlEntry& entry) const;
    bool findRange(const YamlEntry& parent, int end, Range& range) const;
    YamlNodePtr readRange(const Range& range) const;
    bool fits(const YamlNode& read, const Range& range) const;
    YamlNodePtr spliced(const Range& range, const YamlNode& read) const;
    YamlNodePtr moved(const YamlNodePtr& node, int bytes, int lines) const;
    YamlEntry moved(const YamlEntry& entry, int bytes, int lines) const;

    const SourceText& m_before;
    const YamlEntry& m_root;
    const SourceText& m_after;
    const int m_begin;
    const int m_oldEnd;
    const int m_bytes; ///< By how much what is behind the place moves.
    const int m_lines;
    const bool m_isOfLines; ///< What is behind the place begins a line, before and after.
};

} // namespace norvo
