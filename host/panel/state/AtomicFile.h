// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace norvo {

/// Puts `content` in the place of the file, as a whole or not at all. False: nothing was changed,
/// and `reason` says why. What is there and not a regular file is left alone. A link stays, and
/// permissions do. `isUnchanged` is asked last of all whether the file is still the one that the
/// content is to replace.
bool writeFileAtomically(const QString& fileName, const QByteArray& content, QString& reason,
                         const std::function<bool()>& isUnchanged = {});

/// Removes what writings of this file have left beside it that were cut short by a SIGKILL. Only
/// for whoever alone writes the file at this time.
void removeLeftovers(const QString& fileName);

} // namespace norvo
