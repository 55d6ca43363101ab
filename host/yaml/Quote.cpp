// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/Quote.h"

namespace norvo {

namespace {

constexpr int kMaxQuoteLength = 60; ///< In characters.

} // namespace

QString onOneLine(const QString& text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar c : text) {
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\t') {
            line += "\\t";
        } else if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                   c == QChar::ParagraphSeparator) {
            line += QString("\\u%1").arg(c.unicode(), 4, 16, QChar('0'));
        } else {
            line += c;
        }
    }
    return line;
}

QString inQuotes(const QString& text)
{
    QString shown = text;
    if (shown.size() > kMaxQuoteLength) {
        shown.truncate(kMaxQuoteLength - 3);
        if (shown.at(shown.size() - 1).isHighSurrogate()) {
            shown.chop(1);
        }
        shown += "...";
    }
    return '"' + onOneLine(shown) + '"';
}

QString inQuotes(const QStringList& texts)
{
    QStringList quotes;
    for (const QString& text : texts) {
        quotes.append(inQuotes(text));
    }
    return quotes.join(", ");
}

} // namespace norvo
