#include "host/panel/Fault.h"

#include <algorithm>
#include <tuple>

namespace norvo {

namespace {

constexpr int kLongestQuote = 60; ///< In characters.

/// Line ends and other control characters as escapes.
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

} // namespace

QString Fault::toString() const
{
    const QString kind = severity == Severity::Error ? "error" : "warning";
    QString where = file;
    if (place.line > 0) {
        where += QString(":%1:%2").arg(place.line).arg(place.column);
    }
    return onOneLine(QString("%1: %2: %3").arg(where, kind, text));
}

void sortByPlace(Faults& faults)
{
    std::stable_sort(faults.begin(), faults.end(), [](const Fault& a, const Fault& b) {
        return std::tie(a.place.line, a.place.column) < std::tie(b.place.line, b.place.column);
    });
}

bool hasErrors(const Faults& faults)
{
    return std::any_of(faults.cbegin(), faults.cend(),
                       [](const Fault& fault) { return fault.severity == Fault::Severity::Error; });
}

QString inQuotes(const QString& text)
{
    QString shown = text;
    if (shown.size() > kLongestQuote) {
        shown.truncate(kLongestQuote - 3);
        if (shown.at(shown.size() - 1).isHighSurrogate()) {
            shown.chop(1);
        }
        shown += "...";
    }
    return '"' + onOneLine(shown) + '"';
}

} // namespace norvo
