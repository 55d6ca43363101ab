#pragma once

#include <QByteArray>
#include <QString>

namespace norvo {

/// Puts `content` in the place of the file, as a whole or not at all. False: nothing was changed,
/// and `reason` says why. Whatever is there and no regular file is left alone.
bool writeFileAtomically(const QString& fileName, const QByteArray& content, QString& reason);

} // namespace norvo
