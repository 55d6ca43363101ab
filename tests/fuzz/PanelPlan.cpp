// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/PanelPlan.h"
#include "Harness.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"

using norvo::require;

namespace {

struct Types
{
    Types() { plugins.load(NORVO_BUILD_DIR "/plugins"); }

    norvo::PluginSet plugins;
    const norvo::Catalogue catalogue{plugins.manager()};
    const norvo::SenseCheck knowledge{catalogue};
};

} // namespace

/// What --check does with a file, short of QML documents, which are programs.
NORVO_HARNESS(PanelPlan)
{
    static const Types types;

    if (input.toLower().contains("qml")) {
        return;
    }
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto panel = norvo::PanelFile::parse(input, "panel.yaml", diagnostics);
    const auto plan = norvo::PanelPlan::make(panel, types.plugins.manager(), {}, diagnostics, {},
                                             types.knowledge);
    require(int(plan.nodes.size()) == plan.settings.size() &&
                plan.settings.size() == plan.cells.size(),
            "each node has a setting and cells");
    for (const norvo::Diagnostic& one : diagnostics.sorted()) {
        require(!one.text.isEmpty() && !one.toString().contains('\n'), "an error is one line");
    }
    require(diagnostics.hasErrors() || plan.nodes.size() == size_t(panel.devices.size()),
            "a panel without errors has all its devices");
}
