// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/SourceText.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kStride = 256;
constexpr char kByteOrderMark[] = "\xef\xbb\xbf";

bool beginsCharacter(char byte)
{
    return (uchar(byte) & 0xc0) != 0x80;
}

bool isWithin(uchar byte, uchar low, uchar high)
{
    return byte >= low && byte <= high;
}

/// The number of bytes of the character that begins here; 0 when it is none.
int characterLength(const uchar* bytes, int available)
{
    const uchar first = bytes[0];
    if (first < 0x80) {
        return 1;
    }
    const int length = isWithin(first, 0xc2, 0xdf)   ? 2
                       : isWithin(first, 0xe0, 0xef) ? 3
                       : isWithin(first, 0xf0, 0xf4) ? 4
                                                     : 0;
    if (length == 0 || length > available) {
        return 0;
    }
    // The second byte leaves out longer forms than needed, surrogates, and what is beyond Unicode.
    const uchar low = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
    const uchar high = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
    if (!isWithin(bytes[1], low, high)) {
        return 0;
    }
    const bool isWhole = std::all_of(bytes + 2, bytes + length,
                                     [](uchar byte) { return isWithin(byte, 0x80, 0xbf); });
    return isWhole ? length : 0;
}

QString controlError(uchar byte)
{
    const QString what = byte == '\0' ? QString("NUL byte")
                         : byte == '\r'
                             ? QString("carriage return without a line feed")
                             : QString("control character (U+%1)").arg(byte, 4, 16, QChar('0'));
    return what + "; the file must be plain text";
}

} // namespace

std::optional<QByteArray> readTextFile(const QString& fileName, QString& reason)
{
    const QFileInfo info(fileName);
    QFile file(fileName);
    if (!info.exists()) {
        reason = "there is no such file";
    } else if (info.isDir()) {
        reason = "this is a folder, not a file";
    } else if (!info.isFile()) {
        reason = "this is not a regular file";
    } else if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.read(kMaxTextSize + 1);
        if (file.error() == QFileDevice::NoError) {
            return bytes;
        }
    }
    if (reason.isEmpty()) {
        reason = "the file cannot be read: " + file.errorString();
    }
    return std::nullopt;
}

SourceText::SourceText(const QByteArray& bytes) : m_bytes(bytes)
{
    m_lineStarts.push_back(bytes.startsWith(kByteOrderMark) ? 3 : 0);
    int characters = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        if (i % kStride == 0) {
            m_characters.push_back(characters);
        }
        characters += beginsCharacter(bytes.at(i)) ? 1 : 0;
        if (bytes.at(i) == '\n') {
            m_lineStarts.push_back(i + 1);
        }
    }
    m_characters.push_back(characters);
}

int SourceText::lineIndex(int offset) const
{
    const auto next = std::upper_bound(m_lineStarts.cbegin(), m_lineStarts.cend(), offset);
    return std::max(int(next - m_lineStarts.cbegin()) - 1, 0);
}

int SourceText::lineStart(int offset) const
{
    return m_lineStarts[size_t(lineIndex(offset))];
}

int SourceText::charactersBefore(int offset) const
{
    const int counted = offset - offset % kStride;
    return m_characters[size_t(offset / kStride)] +
           int(std::count_if(m_bytes.cbegin() + counted, m_bytes.cbegin() + offset,
                             beginsCharacter));
}

int SourceText::lineEnd(int offset) const
{
    const size_t next = size_t(lineIndex(offset)) + 1;
    return next < m_lineStarts.size() ? m_lineStarts[next] - 1 : size();
}

Place SourceText::placeAt(int offset) const
{
    const int known = std::clamp(offset, start(), size());
    const int line = lineIndex(known);
    return {line + 1, charactersBefore(known) - charactersBefore(m_lineStarts[size_t(line)]) + 1};
}

std::optional<TextError> SourceText::firstBadByte() const
{
    const auto* bytes = reinterpret_cast<const uchar*>(m_bytes.constData());
    for (int i = start(); i < size();) {
        const uchar byte = bytes[i];
        const bool isLineEnd = byte == '\n' || (byte == '\r' && at(i + 1) == '\n');
        if ((byte < 0x20 && byte != '\t' && !isLineEnd) || byte == 0x7f) {
            return TextError{placeAt(i), controlError(byte)};
        }
        const int length = characterLength(bytes + i, size() - i);
        if (length == 0) {
            return TextError{placeAt(i), "byte is not valid UTF-8; save the file as UTF-8"};
        }
        i += length;
    }
    return std::nullopt;
}

} // namespace norvo
