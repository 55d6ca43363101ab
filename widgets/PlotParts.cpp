// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotParts.h"

#include "widgets/GraphOutputWidget.h"
#include "widgets/VectorGraphWidget.h"

namespace {

template <class Widget>
BaseWidget* make(BaseGuiDevice* device)
{
    return new Widget(device, nullptr);
}

} // namespace

extern "C" Q_DECL_EXPORT const PlotParts* norvoPlotParts()
{
    static constexpr PlotParts parts{make<GraphOutputWidget>, make<VectorGraphWidget>};
    return &parts;
}
