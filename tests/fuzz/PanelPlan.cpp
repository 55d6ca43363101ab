// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/PanelPlan.h"
#include "AllTypes.h"
#include "Harness.h"
#include "host/catalogue/Catalogue.h"
#include "host/catalogue/SenseCheck.h"
#include "host/panel/file/PanelFile.h"

#include <algorithm>

using norvo::require;

namespace {

struct Words
{
    const norvo::Catalogue catalogue{norvo::allTypes()};
    const norvo::SenseCheck knowledge{catalogue};
};

} // namespace

/// What --check does with a file, short of QML documents, which are programs.
NORVO_HARNESS(PanelPlan)
{
    static const Words words;

    if (input.toLower().contains("qml")) {
        return;
    }
    norvo::Diagnostics diagnostics("panel.yaml");
    const auto panel = norvo::PanelFile::parse(input, "panel.yaml", diagnostics);
    const auto plan =
        norvo::PanelPlan::make(panel, norvo::allTypes(), {}, diagnostics, {}, words.knowledge);
    require(int(plan.nodes.size()) == plan.settings.size() &&
                plan.settings.size() == plan.cells.size(),
            "each node has a setting and cells");
    for (const norvo::Diagnostic& one : diagnostics.sorted()) {
        require(!one.text.isEmpty() && !one.toString().contains('\n'), "an error is one line");
    }
    const bool isWhole = plan.nodes.size() == size_t(panel.devices.size()) &&
                         std::all_of(plan.nodes.cbegin(), plan.nodes.cend(),
                                     [](const norvo::Node* node) { return node->device(); });
    require(diagnostics.hasErrors() || isWhole, "a panel without errors has all its devices");
}
