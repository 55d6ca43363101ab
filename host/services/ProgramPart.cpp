// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/ProgramPart.h"

#include <QFile>
#include <QFileInfo>
#include <QLibrary>

namespace norvo {

QFunctionPointer functionOfPart(const QString& library, const char* function, QString& error)
{
    // Some run without an application object, which would know it.
    const QString programs = QFileInfo(QFile::symLinkTarget("/proc/self/exe")).path();
    // In the build folder, and as installed.
    for (const char* folder : {"/../lib/", "/" NORVO_INSTALLED_LIBRARIES "/norvo/"}) {
        QLibrary part(programs + folder + library);
        if (const QFunctionPointer found = part.resolve(function)) {
            return found;
        }
        error = part.errorString();
    }
    return nullptr;
}

} // namespace norvo
