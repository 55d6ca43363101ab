// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace norvo {

/// How frames are told apart in a stream of bytes.
struct Framing
{
    static constexpr int kMaxLength = 65536; ///< Of a frame, in bytes.

    enum class Kind { Line, Fixed, Prefixed };

    Kind kind = Kind::Line;
    QByteArray end = "\n"; ///< Of a line.
    int length = 1;        ///< Of a fixed frame.
    int prefixBytes = 1;   ///< That say how long a prefixed frame is, themselves not counted.
    bool isLittle = false; ///< Whether the least of them comes first.

    /// Reads the end of a line: "LF", "CR", "CRLF", bytes such as "0x03" or "0x0d0a", or the text
    /// itself. False, and nothing changes, where it is empty.
    bool readEnd(const QString& text);
    /// Reads "1", "2 big", "2 little", "4 big" or "4 little".
    void readPrefix(const QString& text);

    /// The bytes as they are sent: a line with its end, a prefixed frame with its length, a fixed
    /// one as it is, whatever its length. Nothing where they would be no frame, or several.
    std::optional<QByteArray> wrap(const QByteArray& content) const;
    quint32 readLength(const char* prefix) const;
};

} // namespace norvo
