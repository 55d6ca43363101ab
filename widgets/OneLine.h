// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QStaticText>
#include <QString>

#include <algorithm>

namespace norvo {

/// `text` without anything that would break or widen a line.
inline QString inOneLine(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.isSpace(); }, QChar(' '));
    return text;
}

/// A line laid out once to be drawn often, as plain text in one font.
inline QStaticText staticLine(const QString& line, const QFont& font)
{
    QStaticText text(line);
    text.setTextFormat(Qt::PlainText);
    text.prepare({}, font);
    return text;
}

} // namespace norvo
