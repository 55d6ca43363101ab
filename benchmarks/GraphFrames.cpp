// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchmarks/GraphFrames.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QDateTime>
#include <QEvent>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <vector>

namespace {

constexpr int kFrameMs = 33;

double curveValue(int curve, int point)
{
    const double noise = 0.1 * std::sin(point * 12.9898 + curve) * std::sin(point * 78.233);
    return 0.8 * std::sin(point * 0.002 + curve) + noise;
}

QVector<QPointF> curvePoints(int curve, int count, double end)
{
    QVector<QPointF> points(count);
    for (int i = 0; i < count; ++i) {
        points[i] = {end + (i - count) / GraphFrames::kPointsPerSecond, curveValue(curve, i)};
    }
    return points;
}

QVector<QPointF> newPoints(int curve, double after, double upTo)
{
    QVector<QPointF> points;
    for (double time = after + 1 / GraphFrames::kPointsPerSecond; time <= upTo;
         time += 1 / GraphFrames::kPointsPerSecond) {
        points.append(
            {time, curveValue(curve, int(std::fmod(time, 1e6) * GraphFrames::kPointsPerSecond))});
    }
    return points;
}

QString nameOf(int curve)
{
    return QString("sender %1").arg(curve);
}

/// A frame is over when the queued drawing and the painting that it asks for are done.
void drawAll()
{
    QApplication::processEvents();
    QApplication::processEvents();
}

/// As long as to the next frame, with the graph's own ticks meanwhile.
void pauseBetweenFrames()
{
    QThread::msleep(kFrameMs);
    drawAll();
}

/// Lets no timer tick while it lives: a graph's own drawing would fall into what is measured.
class NoTicks : public QObject
{
public:
    NoTicks() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        return event->type() == QEvent::Timer && qobject_cast<QTimer*>(receiver);
    }
};

template <class Frame>
double milliseconds(Frame frame)
{
    pauseBetweenFrames();
    const NoTicks noTicks;
    const std::clock_t start = std::clock();
    frame();
    return 1000.0 * double(std::clock() - start) / CLOCKS_PER_SEC;
}

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

double secondsNow()
{
    return double(QDateTime::currentMSecsSinceEpoch()) * 0.001;
}

void showPlot(QWidget& window, const QWidget& plot, const QSize& plotSize)
{
    window.resize(plotSize);
    window.show();
    QApplication::processEvents();
    window.resize(window.size() + plotSize - plot.size());
    for (int i = 0; i < 10; ++i) {
        QApplication::processEvents();
    }
}

GraphFrames::GraphFrames(MeasuredGraph& graph, PlottedByOther* other, int curves, int points,
                         const QSize& plotSize)
    : m_graph(graph),
      m_other(other),
      m_curves(curves),
      m_points(points),
      m_lastOfOurs(secondsNow()),
      m_lastOfOthers(m_lastOfOurs)
{
    for (int curve = 0; curve < curves; ++curve) {
        const QVector<QPointF> all = curvePoints(curve, points, m_lastOfOurs);
        for (const QPointF& point : all) {
            graph.widget().input(point.y(), nameOf(curve), point.x());
        }
        other->addCurve(all, graph.plot()->graph(curve)->pen());
    }
    showPlot(graph.widget(), *graph.plot(), plotSize);
    showPlot(*other->widget(), *other->widget(), plotSize);
}

GraphFrames::Medians GraphFrames::measure()
{
    constexpr int frames = 15;
    std::vector<double> oursTimes;
    std::vector<double> otherTimes;
    for (int i = 0; i < frames; ++i) {
        oursTimes.push_back(milliseconds([this] { ours(); }));
        otherTimes.push_back(milliseconds([this] { others(); }));
    }
    return {median(oursTimes), median(otherTimes)};
}

void GraphFrames::ours()
{
    const double now = secondsNow();
    for (int curve = 0; curve < m_curves; ++curve) {
        for (const QPointF& point : newPoints(curve, m_lastOfOurs, now)) {
            m_graph.widget().input(point.y(), nameOf(curve), point.x());
        }
    }
    m_lastOfOurs = now;
    QMetaObject::invokeMethod(&m_graph.widget(), "updateGraph");
    drawAll();
}

void GraphFrames::others()
{
    const double now = secondsNow();
    const double begin = now - m_points / kPointsPerSecond;
    for (int curve = 0; curve < m_curves; ++curve) {
        m_other->advance(curve, newPoints(curve, m_lastOfOthers, now), begin);
    }
    m_lastOfOthers = now;
    m_other->setTimeWindow(begin, now);
    drawAll();
}
