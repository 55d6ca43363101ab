// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Line breaks as they can be typed in one line: a backslash and an "n".
inline QString withLineBreaks(QString text)
{
    return text.replace(QLatin1String("\\n"), QLatin1String("\n"));
}
