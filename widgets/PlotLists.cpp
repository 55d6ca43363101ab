// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotLists.h"

namespace norvo::plot {

namespace {

/// The library gives its lists to classes that derive from the ones that have them.
struct PlotMembers : QCustomPlot
{
    static constexpr auto kPlottables = &PlotMembers::mPlottables;
    static constexpr auto kGraphs = &PlotMembers::mGraphs;
};

struct LayerMembers : QCPLayer
{
    static constexpr auto kChildren = &LayerMembers::mChildren;
};

struct GridMembers : QCPLayoutGrid
{
    static constexpr auto kRows = &GridMembers::mElements;
    static constexpr auto kRowStretches = &GridMembers::mRowStretchFactors;
};

} // namespace

ChildrenSetAside::ChildrenSetAside(QCustomPlot& plot)
    : SetAside(const_cast<QObjectList&>(plot.children()))
{}

ListsSetAside::ListsSetAside(QCustomPlot& plot)
    : m_children(plot),
      m_plottables(plot.*PlotMembers::kPlottables),
      m_graphs(plot.*PlotMembers::kGraphs),
      m_curveLayer(plot.currentLayer()->*LayerMembers::kChildren),
      m_legendLayer(plot.legend->layer()->*LayerMembers::kChildren)
{
    if (plot.legend->columnCount() <= 1) {
        m_rows.emplace(plot.legend->*GridMembers::kRows);
        m_rowStretches.emplace(plot.legend->*GridMembers::kRowStretches);
    }
}

} // namespace norvo::plot
