// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/CommandWords.h"

#include <QRegularExpression>

namespace norvo {

CommandWords splitCommand(const QString& command)
{
    // Spaces, or a piece of a word: in single quotes, in double quotes, escaped, or bare.
    static const QRegularExpression pieces(
        R"re(\s++|'([^']*+)'|"((?:[^"\\]++|\\.)*+)"|\\(.)|([^\s'"\\]++))re",
        QRegularExpression::DotMatchesEverythingOption |
            QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression escaped(R"(\\(["\\]))");

    QStringList words;
    bool inWord = false;
    for (int at = 0; at < command.size();) {
        const QRegularExpressionMatch piece = pieces.match(
            command, at, QRegularExpression::NormalMatch, QRegularExpression::AnchoredMatchOption);
        if (!piece.hasMatch()) {
            return {{},
                    command.at(at) == '\\'
                        ? QStringLiteral("nothing follows its last backslash")
                        : QStringLiteral("the quote at character %1 is not closed").arg(at + 1)};
        }
        at = piece.capturedEnd();
        if (piece.lastCapturedIndex() == 0) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.append(QString());
        }
        inWord = true;
        words.last() += piece.captured(1) + piece.captured(2).replace(escaped, R"(\1)") +
                        piece.captured(3) + piece.captured(4);
    }
    if (words.isEmpty()) {
        return {{}, QStringLiteral("it names no program")};
    }
    return {words, {}};
}

} // namespace norvo
