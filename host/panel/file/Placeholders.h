// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

namespace norvo {

/// A part of a template's text.
struct TextPiece
{
    enum class Kind {
        Literal,
        Placeholder, ///< `text` is its name.
        Unclosed     ///< "$(" without its ")".
    };

    Kind kind = Kind::Literal;
    QString text;
    int begin = 0; ///< Index of its first character in the whole text.
};

/// Takes a text apart at its placeholders: "$(name)" is one, and "$$(" stands for a literal "$(".
QVector<TextPiece> piecesOf(const QString& text);

/// The name of the placeholder that begins the text; empty where none does.
QString firstPlaceholder(const QString& text);

} // namespace norvo
