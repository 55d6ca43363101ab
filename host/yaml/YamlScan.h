// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/SourceText.h"

namespace norvo {

/// The small parts of a YAML text, at offsets where the parser has found them.
namespace YamlScan {

/// True for the characters that end a plain scalar in brackets.
bool isFlowMark(char c);
/// Where the tag or anchor ends that begins here.
int propertyEnd(const SourceText& source, int offset);
/// Where the tag and the anchor end that begin here; the offset itself without any.
int propertiesEnd(const SourceText& source, int offset);
/// The next byte that belongs neither to spaces and line ends nor to a comment.
int skipSpace(const SourceText& source, int offset);
/// Behind the tag and the anchor that begin here, and the spaces and comments behind them.
int skipProperties(const SourceText& source, int offset);

struct Quoted
{
    int end = 0; ///< Behind the closing quote.
    bool isClosed = false;
    bool hasEscapes = false;
};

/// The quoted string that begins here.
Quoted quotedAt(const SourceText& source, int offset);

/// A colour such as "#ff0000" between the two bytes that YAML takes for a comment; empty: none.
QString colourInComment(const SourceText& source, int begin, int end);

} // namespace YamlScan

} // namespace norvo
