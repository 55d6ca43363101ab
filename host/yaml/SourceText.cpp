// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/yaml/SourceText.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cwchar>
#include <locale>

namespace norvo {

namespace {

constexpr int kStride = 32;
constexpr char kByteOrderMark[] = "\xef\xbb\xbf";

bool beginsCharacter(char byte)
{
    return (uchar(byte) & 0xc0) != 0x80;
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

TextChange TextChange::between(const QByteArray& before, const QByteArray& after)
{
    const int common = std::min(before.size(), after.size());
    const auto differing =
        std::mismatch(before.cbegin(), before.cbegin() + common, after.cbegin()).first;
    const int begin = int(differing - before.cbegin());
    const auto behind =
        std::mismatch(before.crbegin(), before.crbegin() + (common - begin), after.crbegin()).first;
    const int end = int(behind - before.crbegin());
    return {begin, before.size() - end, after.size() - end};
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
    using Utf8 = std::codecvt<char32_t, char, std::mbstate_t>;
    const auto& utf8 = std::use_facet<Utf8>(std::locale::classic());
    std::mbstate_t state{};
    const int sound =
        start() + utf8.length(state, m_bytes.cbegin() + start(), m_bytes.cend(), size_t(size()));
    for (int i = start(); i < size(); ++i) {
        const uchar byte = uchar(m_bytes.at(i));
        const bool isSurrogate = byte == 0xed && uchar(at(i + 1)) >= 0xa0; // It lets them pass.
        if (i >= sound || isSurrogate) {
            return TextError{placeAt(i), "byte is not valid UTF-8; save the file as UTF-8"};
        }
        const bool isLineEnd = byte == '\n' || (byte == '\r' && at(i + 1) == '\n');
        if ((byte < 0x20 && byte != '\t' && !isLineEnd) || byte == 0x7f) {
            return TextError{placeAt(i), controlError(byte)};
        }
    }
    return std::nullopt;
}

} // namespace norvo
