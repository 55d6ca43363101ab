// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/Framing.h"

#include <QHash>
#include <QRegularExpression>

namespace norvo {

bool Framing::readEnd(const QString& text)
{
    static const QHash<QString, QByteArray> names{{"LF", "\n"}, {"CR", "\r"}, {"CRLF", "\r\n"}};
    static const QRegularExpression bytes("^0x((?:[0-9a-fA-F]{2}){1,16})$");

    const auto match = bytes.match(text);
    const QByteArray literal =
        match.hasMatch() ? QByteArray::fromHex(match.captured(1).toLatin1()) : text.toUtf8();
    if (!literal.isEmpty()) {
        end = names.value(text.toUpper(), literal);
    }
    return !literal.isEmpty();
}

void Framing::readPrefix(const QString& text)
{
    prefixBytes = text.section(' ', 0, 0).toInt();
    isLittle = text.endsWith("little");
}

std::optional<QByteArray> Framing::wrap(const QByteArray& content) const
{
    if (content.size() > kMaxLength || (kind == Kind::Fixed && content.isEmpty())) {
        return std::nullopt;
    }
    if (kind == Kind::Line) {
        const bool isBreak = end == "\n" || end == "\r" || end == "\r\n";
        const bool hasBreak = content.contains('\n') || content.contains('\r');
        // The end may also come to be where content and end meet.
        const bool isOne = (content + end).indexOf(end) == content.size() && !(isBreak && hasBreak);
        return isOne ? std::optional(content + end) : std::nullopt;
    }
    if (kind == Kind::Fixed) {
        return content;
    }
    if (prefixBytes < 4 && content.size() >> (8 * prefixBytes) != 0) {
        return std::nullopt;
    }
    QByteArray prefix(prefixBytes, '\0');
    for (int i = 0; i < prefixBytes; ++i) {
        prefix[isLittle ? i : prefixBytes - 1 - i] = char(content.size() >> (8 * i));
    }
    return prefix + content;
}

quint32 Framing::readLength(const char* prefix) const
{
    quint32 value = 0;
    for (int i = 0; i < prefixBytes; ++i) {
        value = value << 8 | quint8(prefix[isLittle ? prefixBytes - 1 - i : i]);
    }
    return value;
}

} // namespace norvo
