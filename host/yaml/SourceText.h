// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/Place.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace norvo {

/// Something that is wrong at one place of a text.
struct TextError
{
    Place place;
    QString text;
};

/// The one place in which two texts differ: the bytes of the old one from `begin` up to `oldEnd`
/// are in the new one those up to `newEnd`.
struct TextChange
{
    int begin = 0;
    int oldEnd = 0;
    int newEnd = 0;

    /// The shortest; nothing between them where both texts are equal.
    static TextChange between(const QByteArray& before, const QByteArray& after);
};

constexpr int kMaxTextSize = 4 * 1024 * 1024; ///< Of a text file that is read, in bytes.

/// The content of a regular file, cut behind its first byte too many. Without any, `reason` says
/// why. It never waits, as it would for the other end of a pipe.
std::optional<QByteArray> readTextFile(const QString& fileName, QString& reason);

/// A UTF-8 text that knows the line and column of each of its bytes. Lines end with LF or CR LF; a
/// byte order mark at the start counts as nothing.
class SourceText
{
public:
    explicit SourceText(const QByteArray& bytes);

    /// Spaces, tabs and line ends.
    static bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

    const QByteArray& bytes() const { return m_bytes; }
    int size() const { return m_bytes.size(); }
    int start() const { return m_lineStarts.front(); } ///< The first byte after the mark.
    /// NUL beyond the end, which no sound text holds.
    char at(int offset) const { return offset < size() ? m_bytes.at(offset) : '\0'; }
    int lineStart(int offset) const; ///< The first byte of the line that holds the byte.
    int lineEnd(int offset) const;   ///< The line feed that ends it; the size for the last line.
    Place placeAt(int offset) const; ///< In constant time but for the search of the line.

    /// The first byte that no text file should hold: invalid UTF-8, or a control character other
    /// than a tab or the end of a line.
    std::optional<TextError> firstBadByte() const;

private:
    int lineIndex(int offset) const;
    int charactersBefore(int offset) const;

    const QByteArray m_bytes;
    std::vector<int> m_lineStarts;
    std::vector<int> m_characters; ///< How many begin before each 32nd byte.
};

} // namespace norvo
