// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/SourceText.h"

namespace norvo {

/// What can be told of a YAML text by its characters alone.
namespace YamlTokens {

/// True for the characters that end a plain scalar in brackets.
bool isFlowMark(char c);

/// Where the tag, anchor or alias ends that begins here.
int propertyEnd(const SourceText& source, int offset);

/// Where the tag and the anchor end that begin here, with spaces and comments behind them.
int skipProperties(const SourceText& source, int offset);

struct Quoted
{
    int end = 0; ///< The offset behind the closing quote; the end of the text without one.
    bool isClosed = false;
    bool hasEscapes = false;
};

/// The quoted string that begins here.
Quoted quotedAt(const SourceText& source, int offset);

} // namespace YamlTokens

} // namespace norvo
