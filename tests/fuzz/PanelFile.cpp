// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"
#include "Harness.h"

using norvo::require;

/// Places of what is wrong lie in the text, and a text without errors has all that a panel needs.
NORVO_HARNESS(PanelFile)
{
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto panel = norvo::PanelFile::parse(input, "panel.yaml", diagnostics);
    const int lines = input.count('\n') + input.count('\r') + 1;
    for (const norvo::Diagnostic& one : diagnostics.sorted()) {
        require(!one.text.isEmpty() && !one.toString().contains('\n'), "an error is one line");
        require(!one.file.isEmpty(), "an error names its file");
        require(one.file != "panel.yaml" || (one.place.line <= lines && one.place.column >= 0),
                "an error has a place in the text");
    }
    if (diagnostics.hasErrors()) {
        return;
    }
    for (const auto& device : panel.devices) {
        require(!device.id.text.isEmpty() && !device.type.text.isEmpty(),
                "a device has an id and a type");
    }
    for (const auto& one : panel.connections) {
        for (const auto& part : {one.from.device, one.from.method, one.to.device, one.to.method}) {
            require(!part.text.isEmpty(), "a connection has two ends");
        }
    }
}
