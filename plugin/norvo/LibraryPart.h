// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <dlfcn.h>

namespace norvo {

/// A symbol of the library `file`, which is loaded now: a part that not every program needs. `file`
/// is relative to the folder of the library that `here` lies in or, as installed, to "norvo" in it.
/// Null when there is none; `error` then says why.
inline QFunctionPointer symbolOfPart(const void* here, const QString& file, const char* symbol,
                                     QString& error, QLibrary::LoadHints hints = {})
{
    Dl_info info{};
    dladdr(here, &info);
    const QDir folder(QFileInfo(QFile::decodeName(info.dli_fname)).canonicalPath());
    const QString beside = folder.filePath(file);
    QLibrary part(QFile::exists(beside) ? beside : folder.filePath("norvo/" + file));
    part.setLoadHints(hints);
    const QFunctionPointer found = part.resolve(symbol);
    error = found ? QString() : part.errorString();
    return found;
}

} // namespace norvo
