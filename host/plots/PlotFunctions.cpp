// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/HandledPlot.h"

#include <qcustomplot.h>

#include <QStringList>

namespace norvo {

namespace {

bool hasOnlyGraphs(const QWidget& widget)
{
    const auto& plot = static_cast<const QCustomPlot&>(widget);
    return plot.plottableCount() == plot.graphCount();
}

QString newestValues(const QWidget& widget)
{
    const auto& plot = static_cast<const QCustomPlot&>(widget);
    QStringList values;
    for (int i = 0; i < plot.graphCount(); ++i) {
        const QCPGraph& graph = *plot.graph(i);
        if (!graph.data()->isEmpty()) {
            const double newest = (graph.data()->constEnd() - 1)->value;
            values.append((graph.name() + ' ' + QString::number(newest)).trimmed());
        }
    }
    return values.join(", ");
}

/// Generation 1 of the library draws on the page itself.
void sharpen([[maybe_unused]] QWidget& widget, [[maybe_unused]] double ratio)
{
#ifdef QCUSTOMPLOT_VERSION
    auto& plot = static_cast<QCustomPlot&>(widget);
    plot.setBufferDevicePixelRatio(ratio);
    // It remembers the labels of its axes as pictures of the page's pixels.
    plot.setPlottingHint(QCP::phCacheLabels, qFuzzyCompare(ratio, 1));
    plot.replot(QCustomPlot::rpQueuedReplot);
#endif
}

std::unique_ptr<GraphView> view(QWidget& plot, const ReadEarlier& readEarlier,
                                const std::function<void()>& changed)
{
    return std::make_unique<HandledPlot>(static_cast<QCustomPlot&>(plot), readEarlier, changed);
}

} // namespace

extern "C" Q_DECL_EXPORT const PlotLibrary* norvoPlotLibrary()
{
    static constexpr PlotLibrary library{hasOnlyGraphs, newestValues, sharpen, view};
    return &library;
}

} // namespace norvo
