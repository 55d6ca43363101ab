// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GraphOutputWidget.h"

#include "devices/OutputGraphDevice.h"
#include "widgets/Looks.h"
#include "widgets/PlotCurve.h"
#include "widgets/ShownText.h"

#include <cmath>
#include <limits>

namespace Looks = norvo::Looks;
namespace plot = norvo::plot;

namespace {

constexpr int kMinRefreshMs = 33;
constexpr int kMaxNameLength = 200; // the legend is as wide as its longest name
constexpr double kLargestDouble = std::numeric_limits<double>::max();
constexpr double kSmallestPositiveDouble = std::numeric_limits<double>::min();

/// On its own the library puts every row that is left in anew, each with a look at all before it.
void removeFromLegend(plot::Graph& curve)
{
    QCPLegend* legend = curve.parentPlot()->legend;
    if (legend->elementCount() != legend->rowCount()) {
        curve.removeFromLegend();
        return;
    }
    const plot::ChildrenSetAside children(*curve.parentPlot());
    for (int i = 0, count = legend->itemCount(); i < count; ++i) {
        auto* item = qobject_cast<QCPPlottableLegendItem*>(legend->item(i));
        if (item && item->plottable() == &curve) {
            legend->removeAt(i);
            legend->simplify();
            return;
        }
    }
}

} // namespace

void GraphOutputWidget::initialise()
{
    m_autoscale = getParam(OutputGraphDevice::kAutoscale);
    m_minValue = getParam(OutputGraphDevice::kMinValue);
    m_maxValue = getParam(OutputGraphDevice::kMaxValue);
    m_timePeriod = getParam(OutputGraphDevice::kTimePeriod);
    m_timeout = getParam(OutputGraphDevice::kTimeout);
    if (!m_refreshTimer.isActive()) {
        startRefreshing();
    }

    build(getParam(OutputGraphDevice::kName), {false, plot::kReplotQueued});
    addThreshold(getParam(OutputGraphDevice::kMinThreshold));
    addThreshold(getParam(OutputGraphDevice::kMaxThreshold));
    QCustomPlot* graph = view();
    plot::setDateTimeLabels(graph->xAxis, getParam(OutputGraphDevice::kTimeFormat));
    graph->xAxis->setRange(0, m_timePeriod);
    graph->yAxis->setRange(m_minValue, m_maxValue);
    view()->refresh(plot::kReplotHint);
    setInitialised(true);
    m_areCurvesDrawn = false;
    updateGraph();
}

void GraphOutputWidget::deinitialise()
{
    m_curves.clear();
}

void GraphOutputWidget::startRefreshing()
{
    m_refreshTimer.start(qMax(m_timePeriod, kMinRefreshMs));
    connect(&m_refreshTimer, SIGNAL(timeout()), this, SLOT(updateGraph()));

    // By its name: the device's class is in another library.
    const QObject* const graph = device();
    if (!graph || !graph->inherits("OutputGraphDevice")) {
        return;
    }
    connect(graph, SIGNAL(output(double, QString, double)), this,
            SLOT(input(double, QString, double)));
    connect(graph, SIGNAL(outputColor(QString, QString)), this, SLOT(inputColor(QString, QString)));
    connect(graph, SIGNAL(outputName(QString, QString)), this, SLOT(inputName(QString, QString)));
    connect(graph, SIGNAL(outputFill(QString, bool)), this, SLOT(inputFill(QString, bool)));
}

void GraphOutputWidget::addThreshold(double value)
{
    auto* line = new QCPItemStraightLine(view());
    line->point1->setCoords(kSmallestPositiveDouble, value);
    line->point2->setCoords(kLargestDouble, value);
    line->setPen(Looks::kThresholdLine);
    plot::addItem(view(), line);
}

void GraphOutputWidget::updateGraph()
{
    if (!isReady()) {
        return;
    }
    PlotView* graph = view();
    if (m_autoscale) {
        graph->rescaleAxes(false);
    } else {
        graph->yAxis->setRange(m_minValue, m_maxValue);
    }
    const double now = OutputGraphDevice::secondsSinceEpoch();
    graph->xAxis->setRange(now - m_timePeriod, now);
    const Drawn next = nowToDraw();
    if (wouldChange(next)) {
        m_drawn = next;
        m_areCurvesDrawn = true;
        graph->refresh(plot::kReplotQueued);
    }
}

GraphOutputWidget::Drawn GraphOutputWidget::nowToDraw() const
{
    const double width = view()->xAxis->axisRect()->width() * view()->devicePixelRatioF();
    return {view()->xAxis->range().upper, view()->yAxis->range(), int(width)};
}

bool GraphOutputWidget::wouldChange(const Drawn& next) const
{
    const double pixels = std::abs(next.end - m_drawn.end) * next.width;
    const bool isStill = m_areCurvesDrawn && pixels < m_timePeriod && next.width == m_drawn.width &&
                         next.values.lower == m_drawn.values.lower &&
                         next.values.upper == m_drawn.values.upper;
    return !isStill;
}

void GraphOutputWidget::input(double value, QString sender, double time)
{
    if (!isReady()) {
        return;
    }
    m_areCurvesDrawn = false;
    Segments& segments = segmentsOf(sender);
    plot::Graph* segment = segments.last();
    if (plot::hasData(segment) && time - m_timeout > plot::lastKey(segment)) {
        segment = beginSegment(segments);
    }
    prune(segments, time);
    plot::removeDataBefore(segment, time - m_timePeriod);
    plot::addPoint(segment, time, value);
}

void GraphOutputWidget::inputFill(QString sender, bool fill)
{
    if (!isReady()) {
        return;
    }
    m_areCurvesDrawn = false;
    plot::Graph* segment = lastSegment(sender);
    segment->setBrush(fill ? Looks::curveArea(segment->pen().color()) : QBrush(Qt::NoBrush));
}

void GraphOutputWidget::inputColor(QString sender, QString color)
{
    if (!isReady()) {
        return;
    }
    m_areCurvesDrawn = false;
    const QColor colour(color);
    plot::Graph* segment = lastSegment(sender);
    segment->setPen(Looks::curveLine(colour));
    if (segment->brush() != QBrush(Qt::NoBrush)) {
        segment->setBrush(Looks::curveArea(colour));
    }
}

void GraphOutputWidget::inputName(QString sender, QString name)
{
    if (isReady()) {
        m_areCurvesDrawn = false;
        lastSegment(sender)->setName(norvo::shortened(name, kMaxNameLength, *view()));
    }
}

GraphOutputWidget::Segments& GraphOutputWidget::segmentsOf(const QString& sender)
{
    const auto known = m_curves.find(sender);
    if (known != m_curves.end() && known->last()) {
        return *known;
    }
    plot::Graph* segment = PlotCurve::addTo(view());
    Segments& segments = m_curves[sender];
    segments = {segment};
    segment->setName(norvo::shortened(sender, kMaxNameLength, *view()));
    segment->setBrush(Qt::NoBrush);

    const int count = m_curves.size();
    segment->setPen(Looks::curveLine(Looks::curveColor(count)));
    if (count > 1) {
        view()->xAxis->axisRect()->insetLayout()->setInsetAlignment(0,
                                                                    Qt::AlignTop | Qt::AlignRight);
        view()->legend->setVisible(true);
    }
    return segments;
}

plot::Graph* GraphOutputWidget::beginSegment(Segments& segments)
{
    plot::Graph* previous = segments.last();
    plot::Graph* segment = PlotCurve::addTo(view());
    segment->setPen(previous->pen());
    segment->setName(previous->name());
    removeFromLegend(*previous);
    segments.append(segment);
    return segment;
}

void GraphOutputWidget::prune(Segments& segments, double time)
{
    // The last segment stays in any case: it is about to be appended to.
    for (const QPointer<plot::Graph>& segment : qAsConst(segments)) {
        if (segment && segment != segments.last() &&
            (!plot::hasData(segment) || time - m_timePeriod > plot::lastKey(segment))) {
            segment->parentPlot()->removeGraph(segment);
        }
    }
    segments.removeAll({});
}
