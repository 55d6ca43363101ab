// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/Descriptions.h"
#include "host/panel/plan/PanelPlan.h"
#include "host/panel/run/Panel.h"
#include "host/window/PanelPages.h"

#include "norvo/DeviceManager.h"

#include <utility>

/// A panel that a service listens to as the program has it do so: before the plan is applied, and
/// once it is.
class ListenedPanel
{
public:
    template <typename Service>
    void start(const norvo::PanelDescription& description, Service& service)
    {
        norvo::Diagnostics diagnostics("panel.yaml");
        auto plan = norvo::PanelPlan::make(description, manager, {}, diagnostics);
        service.listen(plan);
        panel.apply(std::move(plan), diagnostics);
        service.complete(panel);
    }

    template <typename Device>
    Device& device(const QString& id) const
    {
        return dynamic_cast<Device&>(*panel.device(id));
    }

    DeviceManager manager;
    norvo::PanelPages pages;
    norvo::Panel panel{pages};
};
