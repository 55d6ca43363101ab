// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/SourceText.h"

namespace norvo {

/// What can be told of a YAML text by its characters alone.
namespace YamlTokens {

constexpr int kMaxTokens = 1000000; ///< Not reported yet; 100,000 values never need as many.

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

/// Reads over tokens in brackets or on one line, where the parser keeps all of them until it knows
/// whether they are a key, and finds what is beyond a limit before the parser runs out of memory.
class YamlLookahead
{
public:
    /// What the parser has reported before.
    struct Start
    {
        int offset = 0;
        int depth = 0;    ///< Levels of lists and maps.
        int brackets = 0; ///< Those of them that are in brackets.
        int values = 0;
    };

    YamlLookahead(const SourceText& source, const Start& start);

    /// Throws a TextError where a limit is passed; otherwise gives the offset up to which it could
    /// tell the tokens apart.
    int run();

private:
    bool readToken(char c);
    void open();
    void close();
    void count(int values);
    void skipPlain();
    bool isDocumentMark() const;
    bool isAtWordStart() const;

    const SourceText& m_source;
    Start m_now;
    int m_tokens = 0;
    bool m_isAfterText = false;
    bool m_isCounted = true; ///< The value before the next comma.
};

} // namespace norvo
