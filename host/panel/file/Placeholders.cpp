// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/Placeholders.h"

namespace norvo {

namespace {

const QString kOpening = QStringLiteral("$(");

} // namespace

QVector<TextPiece> piecesOf(const QString& text)
{
    QVector<TextPiece> pieces;
    int done = 0;
    const auto addLiteral = [&](int end) {
        if (end > done) {
            pieces.append({TextPiece::Kind::Literal, text.mid(done, end - done), done});
        }
    };
    int open = text.indexOf(kOpening);
    while (open >= 0) {
        if (open > done && text.at(open - 1) == '$') {
            addLiteral(open - 1);
            pieces.append({TextPiece::Kind::Literal, kOpening, open - 1});
            done = open + kOpening.size();
        } else {
            addLiteral(open);
            const int close = text.indexOf(')', open);
            if (close < 0) {
                pieces.append({TextPiece::Kind::Unclosed, text.mid(open), open});
                return pieces;
            }
            const int name = open + kOpening.size();
            pieces.append({TextPiece::Kind::Placeholder, text.mid(name, close - name), open});
            done = close + 1;
        }
        open = text.indexOf(kOpening, done);
    }
    addLiteral(text.size());
    return pieces;
}

QString firstPlaceholder(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.startsWith(kOpening)) {
        return {};
    }
    const TextPiece first = piecesOf(trimmed).first();
    return first.kind == TextPiece::Kind::Placeholder ? first.text : QString();
}

} // namespace norvo
