// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/GraphOutputWidget.h"

#include "devices/OutputGraphDevice.h"
#include "widgets/Looks.h"
#include "widgets/PlotCurve.h"
#include "widgets/ShownText.h"

#include <QTimer>

#include <limits>

namespace Looks = norvo::Looks;
namespace plot = norvo::plot;

namespace {

constexpr int kMinRefreshMs = 33;
constexpr int kMaxNameLength = 200; // the legend is as wide as its longest name
constexpr double kLargestDouble = std::numeric_limits<double>::max();
constexpr double kSmallestPositiveDouble = std::numeric_limits<double>::min();

} // namespace

GraphOutputWidget::GraphOutputWidget(BaseGuiDevice* device, QWidget* parent)
    : BaseWidget(device, parent)
{}

GraphOutputWidget::~GraphOutputWidget() = default;

void GraphOutputWidget::initialise()
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    readParameters();
    if (!m_refreshTimer) {
        startRefreshing();
    }

    m_frame.build(getLayout(), getParam(OutputGraphDevice::kName), {false, plot::kReplotQueued});
    addThreshold(m_minThreshold);
    addThreshold(m_maxThreshold);
    QCustomPlot* graph = m_frame.plot();
    plot::setDateTimeLabels(graph->xAxis, getParam(OutputGraphDevice::kTimeFormat));
    graph->xAxis->setRange(0, m_timePeriod);
    graph->yAxis->setRange(m_minValue, m_maxValue);
    m_frame.plot()->refresh(plot::kReplotHint);
    setInitialised(true);
    updateGraph();
}

void GraphOutputWidget::deinitialise()
{
    m_curves.clear();
}

void GraphOutputWidget::readParameters()
{
    m_autoscale = getParam(OutputGraphDevice::kAutoscale);
    m_minValue = getParam(OutputGraphDevice::kMinValue);
    m_maxValue = getParam(OutputGraphDevice::kMaxValue);
    m_minThreshold = getParam(OutputGraphDevice::kMinThreshold);
    m_maxThreshold = getParam(OutputGraphDevice::kMaxThreshold);
    m_timePeriod = getParam(OutputGraphDevice::kTimePeriod);
    m_timeout = getParam(OutputGraphDevice::kTimeout);
}

void GraphOutputWidget::startRefreshing()
{
    m_refreshTimer = std::make_unique<QTimer>();
    m_refreshTimer->start(qMax(m_timePeriod, kMinRefreshMs));
    connect(m_refreshTimer.get(), SIGNAL(timeout()), this, SLOT(updateGraph()));

    auto* graph = qobject_cast<OutputGraphDevice*>(device());
    if (!graph) {
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
    auto* line = new QCPItemStraightLine(m_frame.plot());
    line->point1->setCoords(kSmallestPositiveDouble, value);
    line->point2->setCoords(kLargestDouble, value);
    line->setPen(Looks::kThresholdLine);
    plot::addItem(m_frame.plot(), line);
}

void GraphOutputWidget::changeEvent(QEvent* event)
{
    BaseWidget::changeEvent(event);
    m_frame.changeEvent(*this, *event);
}

void GraphOutputWidget::updateGraph()
{
    if (!isReady()) {
        return;
    }
    PlotView* graph = m_frame.plot();
    if (m_autoscale) {
        graph->rescaleAxes(false);
    } else {
        graph->yAxis->setRange(m_minValue, m_maxValue);
    }
    const double now = OutputGraphDevice::secondsSinceEpoch();
    graph->xAxis->setRange(now - m_timePeriod, now);
    graph->refresh(plot::kReplotQueued);
}

void GraphOutputWidget::input(double value, QString sender, double time)
{
    if (isReady()) {
        append(segmentsOf(sender), value, time);
    }
}

void GraphOutputWidget::inputFill(QString sender, bool fill)
{
    if (!isReady()) {
        return;
    }
    QCPGraph* segment = lastSegment(sender);
    segment->setBrush(fill ? Looks::curveArea(segment->pen().color()) : QBrush(Qt::NoBrush));
}

void GraphOutputWidget::inputColor(QString sender, QString color)
{
    if (!isReady()) {
        return;
    }
    const QColor colour(color);
    QCPGraph* segment = lastSegment(sender);
    segment->setPen(Looks::curveLine(colour));
    if (segment->brush() != QBrush(Qt::NoBrush)) {
        segment->setBrush(Looks::curveArea(colour));
    }
}

void GraphOutputWidget::inputName(QString sender, QString name)
{
    if (isReady()) {
        lastSegment(sender)->setName(norvo::shortened(name, kMaxNameLength, *m_frame.plot()));
    }
}

GraphOutputWidget::Segments& GraphOutputWidget::segmentsOf(const QString& sender)
{
    const auto known = m_curves.find(sender);
    if (known != m_curves.end() && known->last()) {
        return *known;
    }
    QCPGraph* segment = PlotCurve::addTo(m_frame.plot());
    Segments& segments = m_curves[sender];
    segments = {segment};
    segment->setName(norvo::shortened(sender, kMaxNameLength, *m_frame.plot()));
    segment->setBrush(Qt::NoBrush);

    const int count = m_curves.size();
    segment->setPen(Looks::curveLine(Looks::curveColor(count)));
    if (count > 1) {
        m_frame.plot()->xAxis->axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignTop |
                                                                                   Qt::AlignRight);
        m_frame.plot()->legend->setVisible(true);
    }
    return segments;
}

void GraphOutputWidget::append(Segments& segments, double value, double time)
{
    QCPGraph* segment = segments.last();
    if (plot::hasData(segment) && time - m_timeout > plot::lastKey(segment)) {
        segment = beginSegment(segments);
    }
    prune(segments, time);
    plot::removeDataBefore(segment, time - m_timePeriod);
    segment->addData(time, value);
}

QCPGraph* GraphOutputWidget::beginSegment(Segments& segments)
{
    QCPGraph* previous = segments.last();
    QCPGraph* segment = PlotCurve::addTo(m_frame.plot());
    segment->setPen(previous->pen());
    segment->setName(previous->name());
    previous->removeFromLegend();
    segments.append(segment);
    return segment;
}

void GraphOutputWidget::prune(Segments& segments, double time)
{
    // The last segment stays in any case: it is about to be appended to.
    for (int i = 0; i < segments.size() - 1;) {
        QCPGraph* segment = segments[i];
        if (!segment) {
            segments.remove(i);
        } else if (!plot::hasData(segment) || time - m_timePeriod > plot::lastKey(segment)) {
            segment->parentPlot()->removeGraph(segment);
            segments.remove(i);
        } else {
            ++i;
        }
    }
}
