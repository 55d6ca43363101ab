// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/view/View.h"

#include "host/services/ProgramPart.h"

namespace norvo {

std::unique_ptr<View> makeView(const ViewSettings& settings, const ViewSubject& subject,
                               QString& error)
{
    const auto make =
        reinterpret_cast<MakeView>(functionOfPart("libNorvoView.so", kMakeViewFunction, error));
    return std::unique_ptr<View>(make ? make(settings, subject, error) : nullptr);
}

} // namespace norvo
