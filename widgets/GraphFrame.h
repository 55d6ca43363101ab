#pragma once

#include "widgets/PlotView.h"

class QGridLayout;
class QLabel;

/// The caption and the plot under it, as both kinds of graph show them. The layout's widget owns
/// them.
class GraphFrame
{
public:
    /// Makes and places a caption and a plot. Those made before stay where they are, out of sight.
    void build(QGridLayout* layout, const QString& caption, const PlotView::Look& look);

    void recolour(); ///< Takes the palette's colours as they are now; nothing before build().

    PlotView* plot() const { return m_plot; } ///< Null before build().

private:
    QLabel* m_caption = nullptr;
    PlotView* m_plot = nullptr;
};
