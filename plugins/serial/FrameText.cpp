// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/FrameText.h"

#include <QRegularExpression>

namespace norvo {

QString readFrameText(FrameText form, const QByteArray& bytes)
{
    switch (form) { // With its length, otherwise a text ends at a zero byte.
    case FrameText::Latin1:
        return QString::fromLatin1(bytes.constData(), bytes.size());
    case FrameText::Hex:
        return QString::fromLatin1(bytes.toHex());
    case FrameText::Utf8:
        break;
    }
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

std::optional<QByteArray> writeFrameText(FrameText form, const QString& text)
{
    static const QRegularExpression hex("^ *(?:[0-9a-fA-F]{2} *)*+$");

    if (form == FrameText::Utf8) {
        return text.toUtf8();
    }
    const QByteArray latin = text.toLatin1();
    if (form == FrameText::Latin1) {
        return readFrameText(form, latin) == text ? std::optional(latin) : std::nullopt;
    }
    return hex.match(text).hasMatch() ? std::optional(QByteArray::fromHex(latin)) : std::nullopt;
}

} // namespace norvo
