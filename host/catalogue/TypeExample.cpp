// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/TypeExample.h"

#include "host/catalogue/TypeWords.h"
#include "host/panel/file/PanelFile.h"

#include <algorithm>

namespace norvo {

PanelDescription TypeExample::panel(const TypeWords& words)
{
    Diagnostics unread("example");
    return PanelFile::parse(words.example.toUtf8(), "example", unread);
}

std::optional<DeviceSetting> TypeExample::device(const TypeWords& words)
{
    const PanelDescription example = panel(words);
    const auto found = std::find_if(
        example.devices.cbegin(), example.devices.cend(), [&words](const DeviceSetting& device) {
            return device.type.text.compare(words.key, Qt::CaseInsensitive) == 0;
        });
    return found == example.devices.cend() ? std::nullopt : std::make_optional(*found);
}

} // namespace norvo
