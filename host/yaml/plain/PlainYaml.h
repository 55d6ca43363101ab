// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlBuilder.h"

namespace norvo {

/// Reads the plain YAML that most panel files are: maps and lists by indentation, others in
/// brackets within a line, texts within a line, comments. It takes a tenth of the parser's time.
///
/// It gives up at whatever is written in another way or is not sound; then the parser has to read
/// all of it. Where it does not, the builder has got the parser's events.
class PlainYaml
{
public:
    PlainYaml(const SourceText& source, YamlBuilder& builder);

    /// Whether it has read all of it. What the builder throws goes through.
    bool read();

private:
    /// A text within a line.
    struct Scalar
    {
        int begin = 0; ///< Of its quote, where it has one.
        int end = 0;   ///< Behind its quote, and before the spaces behind it.
        bool isQuoted = false;
    };

    bool nextLine();
    bool endLine();
    bool block(int indent);
    bool map(int indent);
    bool list(int indent);
    bool valueOfKey(int indent);
    bool valueInLine(int indent);
    bool flow(int depth);
    bool flowEntry(bool isMap, int depth);
    bool scalar(bool isInFlow, Scalar& found);
    bool quoted(Scalar& found);
    bool plain(bool isInFlow, Scalar& found);
    bool isKeyEnd() const;
    bool tell(const Scalar& scalar);
    void skipBlanks();

    char at(int offset) const { return m_at[offset]; }
    YAML::Mark markAt(int offset) const;

    YamlBuilder& m_builder;
    const SourceText& m_source;
    const char* const m_at;
    int m_pos = 0;
    int m_indent = -1; ///< Of the line where m_pos is at the first character; -1 at the end.
};

} // namespace norvo
