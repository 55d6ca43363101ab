// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/View.h"

#include <QCoreApplication>
#include <QLibrary>

namespace norvo {

std::unique_ptr<View> makeView(const ViewSettings& settings, const ViewSubject& subject,
                               QString& error)
{
    const QString programs = QCoreApplication::applicationDirPath();
    // In the build folder, and as installed.
    for (const char* folder : {"/../lib", "/" NORVO_INSTALLED_LIBRARIES "/norvo"}) {
        QLibrary library(programs + folder + "/libNorvoView.so");
        const auto make = reinterpret_cast<MakeView>(library.resolve(kMakeViewFunction));
        if (make) {
            return std::unique_ptr<View>(make(settings, subject, error));
        }
        error = library.errorString();
    }
    return nullptr;
}

} // namespace norvo
