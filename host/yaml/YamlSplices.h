// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlSpans.h"
#include "host/yaml/YamlText.h"

#include <QString>

#include <optional>
#include <vector>

namespace norvo {

/// What takes the place of some bytes of a text.
struct YamlSplice
{
    int begin = 0;
    int end = 0;
    QString text;
};

/// Finds the splices of edits, in the style of what they replace or of its siblings.
///
/// A splice may be wrong where a text is written in a way that nobody would choose; YamlEdit reads
/// what comes out.
class YamlSplices
{
public:
    /// `writesLines`: new texts of several lines are written as such, not as escapes.
    YamlSplices(const SourceText& source, const YamlEntry& root, bool writesLines = false)
        : m_source(source), m_spans(source), m_root(root), m_writesLines(writesLines)
    {}

    /// Writes a text in the place of an entry's value. The best first.
    std::vector<YamlSplice> replacements(const YamlEntry& parent, int index,
                                         const QString& text) const;
    /// Writes another key of an entry. The best first.
    std::vector<YamlSplice> renamings(const YamlEntry& parent, int index, const QString& key) const;
    /// Writes an entry behind that of the index `after`, before all with -1. `depth`:
    /// entries above the new one; 0 at the top.
    YamlSplice insertion(const YamlEntry& parent, const YamlEntry& entry, int after,
                         int depth) const;
    /// Writes the first entry of a list or map in the place of an absent value, or an empty one.
    /// The root has no `parent`.
    YamlSplice creation(const YamlEntry* parent, int index, const YamlEntry& entry,
                        int depth) const;
    YamlSplice removal(const YamlEntry& parent, int index) const;
    /// Writes the entries of a map in brackets on one line each; nothing where that is no map in
    /// brackets within lines, or stands on several.
    std::optional<YamlSplice> unfolding(const YamlEntry& parent, int index) const;

private:
    /// Where an entry is to be written.
    struct Spot
    {
        const YamlEntry* parent; ///< Null for one that is new itself.
        int depth;               ///< Entries above; 0 at the top.
        int place;
        YamlQuotes quotes;
    };

    YamlSplice flowInsertion(const YamlEntry& parent, const YamlEntry& entry, int after) const;
    YamlSplice flowRemoval(const YamlEntry& parent, int index) const;
    YamlSplice emptying(const YamlEntry& parent) const;
    QString blockEntry(const YamlEntry& entry, const QString& indent, const Spot& spot) const;
    YamlQuotes quotesOf(const YamlEntry& parent) const;
    const YamlEntry* modelOf(const QString& key, const Spot& spot) const;
    QString stepOf(const YamlEntry* model) const;
    QString separator(const YamlSpan& span, bool isFlow) const;
    QString indentOf(const YamlEntry& parent) const;
    int columnOf(int offset) const { return offset - m_source.lineStart(offset); }
    bool isFirstOnLine(int offset) const;
    int lineBreak(int offset) const;
    QString part(int begin, int end) const;
    QString lineEnd() const;

    const SourceText& m_source;
    const YamlSpans m_spans;
    const YamlEntry& m_root;
    const bool m_writesLines;
};

} // namespace norvo
