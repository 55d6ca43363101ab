#include "widgets/GraphOutputWidget.h"

#include "devices/OutputGraphDevice.h"

#include <QDateTime>
#include <QTimer>

#include <limits>

namespace plot = norvo::plot;

namespace {

constexpr int kShortestRefreshMs = 33;
constexpr int kFillAlpha = 128;
constexpr double kLargestDouble = std::numeric_limits<double>::max();
constexpr double kSmallestPositiveDouble = std::numeric_limits<double>::min();

QPen curvePen(const QColor& colour)
{
    QPen pen(colour);
    pen.setCosmetic(true);
    return pen;
}

/// The colour of the nth sender, counted from 1.
QColor senderColour(int n)
{
    constexpr int colours = 12;
    constexpr int firstColour = 6;
    return n == 1 ? QColor(250, 140, 0) : QColor(Qt::GlobalColor(n % colours + firstColour));
}

QBrush fillBrush(QColor colour)
{
    colour.setAlpha(kFillAlpha);
    return QBrush(colour);
}

} // namespace

GraphOutputWidget::GraphOutputWidget(BaseGuiDevice* device, QWidget* parent)
    : BaseWidget(device, parent),
      m_smallestSeen(kLargestDouble),
      m_largestSeen(kSmallestPositiveDouble)
{}

GraphOutputWidget::~GraphOutputWidget() = default;

void GraphOutputWidget::initialise()
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    readParameters();
    m_smallestSeen = kLargestDouble;
    m_largestSeen = kSmallestPositiveDouble;
    if (!m_refreshTimer) {
        startRefreshing();
    }

    m_curves.clear(); // The segments of an earlier plot stay there.
    m_frame.build(getLayout(), getParam("name"), {false, plot::kReplotQueued});
    addThreshold(m_minThreshold);
    addThreshold(m_maxThreshold);
    QCustomPlot* graph = m_frame.plot();
    plot::setDateTimeLabels(graph->xAxis, getParam("widget/timeFormat"));
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
    m_autoscale = getParam("widget/autoscale");
    m_minValue = getParam("widget/minValue");
    m_maxValue = getParam("widget/maxValue");
    m_minThreshold = getParam("widget/minThreshold");
    m_maxThreshold = getParam("widget/maxThreshold");
    m_timePeriod = getParam("widget/timePeriod");
    m_timeout = getParam("widget/timeout");
}

void GraphOutputWidget::startRefreshing()
{
    m_refreshTimer = std::make_unique<QTimer>();
    m_refreshTimer->start(qMax(m_timePeriod, kShortestRefreshMs));
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
    line->setPen(QPen(QColor(Qt::darkRed), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    plot::addItem(m_frame.plot(), line);
}

void GraphOutputWidget::changeEvent(QEvent* event)
{
    BaseWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_frame.recolour();
    }
}

void GraphOutputWidget::updateGraph()
{
    if (!isInitialised()) {
        return;
    }
    PlotView* graph = m_frame.plot();
    if (m_autoscale) {
        graph->rescaleAxes(false);
    } else {
        graph->yAxis->setRange(m_minValue, m_maxValue);
    }
    const double now = double(QDateTime::currentMSecsSinceEpoch()) * 0.001;
    graph->xAxis->setRange(now - m_timePeriod, now);
    graph->refresh(plot::kReplotQueued);
}

void GraphOutputWidget::input(double value, QString sender, double time)
{
    if (isInitialised()) {
        append(segmentsOf(sender), value, time);
    }
}

void GraphOutputWidget::inputFill(QString sender, bool fill)
{
    if (!isInitialised()) {
        return;
    }
    QCPGraph* segment = lastSegment(sender);
    segment->setBrush(fill ? fillBrush(segment->pen().color()) : QBrush(Qt::NoBrush));
}

void GraphOutputWidget::inputColor(QString sender, QString color)
{
    if (!isInitialised()) {
        return;
    }
    const QColor colour(color);
    QCPGraph* segment = lastSegment(sender);
    segment->setPen(curvePen(colour));
    if (segment->brush() != QBrush(Qt::NoBrush)) {
        segment->setBrush(fillBrush(colour));
    }
}

void GraphOutputWidget::inputName(QString sender, QString name)
{
    if (isInitialised()) {
        lastSegment(sender)->setName(name);
    }
}

GraphOutputWidget::Segments& GraphOutputWidget::segmentsOf(const QString& sender)
{
    const auto known = m_curves.find(sender);
    if (known != m_curves.end()) {
        return *known;
    }
    QCPGraph* segment = plot::addCurve(m_frame.plot());
    Segments& segments = m_curves[sender];
    segments.append(segment);
    segment->setName(sender);
    segment->setBrush(Qt::NoBrush);

    const int count = m_curves.size();
    segment->setPen(curvePen(senderColour(count)));
    if (count > 1) {
        m_frame.plot()->xAxis->axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignTop |
                                                                                   Qt::AlignRight);
        m_frame.plot()->legend->setVisible(true);
    }
    return segments;
}

void GraphOutputWidget::append(Segments& segments, double value, double time)
{
    if (value > m_largestSeen) {
        m_largestSeen = value;
    }
    if (m_smallestSeen > value) {
        m_smallestSeen = value;
    }
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
    QCPGraph* segment = plot::addCurve(m_frame.plot());
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
        if (!plot::hasData(segment) || time - m_timePeriod > plot::lastKey(segment)) {
            m_frame.plot()->removeGraph(segment);
            segments.remove(i);
        } else {
            ++i;
        }
    }
}
