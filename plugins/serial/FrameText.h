// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace norvo {

/// How the bytes of a frame are written as a text: in UTF-8, each as the character of its number
/// (Latin-1), or as two hexadecimal digits ("01ff").
enum class FrameText { Utf8, Latin1, Hex };

/// Bytes that are no UTF-8 become U+FFFD.
QString readFrameText(FrameText form, const QByteArray& bytes);
/// Nothing where the text cannot be written so. Hexadecimal digits may be upper case, and spaces
/// may stand between bytes.
std::optional<QByteArray> writeFrameText(FrameText form, const QString& text);

} // namespace norvo
