// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/YamlTree.h"

#include <QString>

#include <optional>

namespace norvo {

/// In which quotes texts are written that need none; null: in none.
struct YamlQuotes
{
    QChar key;
    QChar text; ///< Of values that are neither numbers nor yes or no.
};

/// Writes texts as YAML, so that they are read back verbatim.
namespace YamlText {

/// In double quotes; half of a surrogate pair, which no file can hold, becomes U+FFFD.
QString doubleQuoted(const QString& text);
/// In single quotes; nothing for a text that needs escapes.
std::optional<QString> singleQuoted(const QString& text);
/// Without quotes where that reads back, else in those that need fewer escapes. `isFlow`: to stand
/// in brackets.
QString leastQuoted(const QString& text, bool isFlow);
QString leastQuotedKey(const QString& key);
/// In these quotes where the text is to have some, else as leastQuoted().
QString quoted(const QString& text, bool isFlow, const YamlQuotes& quotes);
QString quotedKey(const QString& key, const YamlQuotes& quotes);
/// As a block scalar: `header` is the sign of the one that it replaces and the comment behind it.
/// Nothing for a text that such a scalar cannot hold.
std::optional<QString> block(const QString& text, const QString& header, const QString& indent,
                             const QString& lineEnd);
/// On one line, with brackets around lists and maps.
QString flow(const YamlNode& node, const YamlQuotes& quotes = {});

} // namespace YamlText

} // namespace norvo
