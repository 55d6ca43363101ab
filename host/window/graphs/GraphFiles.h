// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QByteArray;

namespace norvo {

/// Writes `content` into a new file whose name is `start`, the time, and `end`: as a whole or not
/// at all, and never in the place of another. Gives its name; empty: nothing was written, and
/// `reason` says why.
QString writeNewFile(const QString& start, const QString& end, const QByteArray& content,
                     QString& reason);

} // namespace norvo
