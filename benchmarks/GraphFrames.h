// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "benchmarks/PlottedByOthers.h"
#include "devices/GraphSettingsDevice.h"
#include "devices/OutputGraphDevice.h"
#include "widgets/GraphOutputWidget.h"

#include <QMap>
#include <QSize>

#include <memory>

double secondsNow(); ///< Since the epoch, as the graphs count.

/// A time graph with its widget, initialised.
class MeasuredGraph
{
public:
    explicit MeasuredGraph(const QMap<QString, QString>& params = {})
    {
        for (auto param = params.cbegin(); param != params.cend(); ++param) {
            m_device.setParam(param.key(), param.value());
        }
        m_device.setObjectName("graph");
        m_device.setRunning(m_device.initialise());
        m_widget.reset(static_cast<GraphOutputWidget*>(m_device.createWidget()));
        m_widget->initialise();
    }

    OutputGraphDevice& device() { return m_device; }
    GraphOutputWidget& widget() { return *m_widget; }
    QCustomPlot* plot() { return m_widget->findChild<QCustomPlot*>(); }

    void feedFrom(GraphSettingsDevice& sender)
    {
        QObject::connect(&sender, SIGNAL(output(double)), &m_device, SLOT(input(double)));
    }

private:
    OutputGraphDevice m_device;
    std::unique_ptr<GraphOutputWidget> m_widget;
};

/// New points of each curve, and the window moved up to them. Both have the same points.
class GraphFrames
{
public:
    static constexpr double kPointsPerSecond = 1000;

    /// Both plots get that size and are shown.
    GraphFrames(MeasuredGraph& graph, PlottedByOther* other, int curves, int points,
                const QSize& plotSize = {800, 400});

    struct Medians
    {
        double ours;
        double other;
    };
    /// The processor time that 15 frames cost each, turn and turn about, in milliseconds.
    Medians measure();

    void ours();
    void others();

private:
    MeasuredGraph& m_graph;
    PlottedByOther* m_other;
    const int m_curves;
    const int m_points;
    double m_lastOfOurs; ///< Time of the newest point.
    double m_lastOfOthers;
};

/// Shows the window with its plot in that size and lets everything settle.
void showPlot(QWidget& window, const QWidget& plot, const QSize& plotSize = {800, 400});
