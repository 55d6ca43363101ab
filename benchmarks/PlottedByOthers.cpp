// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchmarks/PlottedByOthers.h"

#include <qcustomplot.h>

namespace {

/// The same curves as ours draws, in a plot of the library's own that does nothing but that.
class BarePlot : public PlottedByOther
{
public:
    explicit BarePlot(QCustomPlot& model) : m_model(model)
    {
        m_plot.setAntialiasedElements(QCP::aeAll);
        m_plot.xAxis->setTicker(QSharedPointer<QCPAxisTickerDateTime>::create());
        m_plot.xAxis->grid()->setPen(model.xAxis->grid()->pen());
        m_plot.yAxis->grid()->setPen(model.yAxis->grid()->pen());
        m_plot.legend->setVisible(true);
    }

    QWidget* widget() override { return &m_plot; }

    void addCurve(const QVector<QPointF>& points, const QPen& pen) override
    {
        QCPGraph* const graph = m_plot.addGraph();
        graph->setPen(pen);
        graph->setName(m_model.graph(m_plot.graphCount() - 1)->name());
        for (const QPointF& point : points) {
            graph->addData(point.x(), point.y());
        }
    }

    void advance(int curve, const QVector<QPointF>& points, double begin) override
    {
        QCPGraph* const graph = m_plot.graph(curve);
        graph->data()->removeBefore(begin);
        for (const QPointF& point : points) {
            graph->addData(point.x(), point.y());
        }
    }

    void setTimeWindow(double from, double to) override
    {
        m_plot.yAxis->setRange(m_model.yAxis->range());
        m_plot.xAxis->setRange(from, to);
        m_plot.replot(QCustomPlot::rpQueuedReplot);
    }

private:
    QCustomPlot m_plot;
    QCustomPlot& m_model;
};

} // namespace

std::unique_ptr<PlottedByOther> plottedByBarePlot(QCustomPlot& model)
{
    return std::make_unique<BarePlot>(model);
}

#ifdef NORVO_WITH_QWT
#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>

namespace {

class PlottedByQwt : public PlottedByOther
{
public:
    explicit PlottedByQwt(bool antialiased) : m_antialiased(antialiased)
    {
        m_plot.setCanvasBackground(Qt::white);
        auto* const grid = new QwtPlotGrid;
        grid->setPen(QPen(Qt::black, 1, Qt::DotLine));
        grid->attach(&m_plot);
        m_plot.insertLegend(new QwtLegend, QwtPlot::RightLegend);
        m_plot.setAxisScale(QwtPlot::yLeft, -1, 1);
    }

    QWidget* widget() override { return &m_plot; }

    void addCurve(const QVector<QPointF>& points, const QPen& pen) override
    {
        auto* const curve = new QwtPlotCurve;
        curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
        curve->setRenderHint(QwtPlotItem::RenderAntialiased, m_antialiased);
        curve->setPen(pen);
        curve->setSamples(points);
        curve->attach(&m_plot);
    }

    void setTimeWindow(double from, double to) override
    {
        m_plot.setAxisScale(QwtPlot::xBottom, from, to);
        m_plot.replot();
    }

private:
    QwtPlot m_plot;
    bool m_antialiased;
};

} // namespace

std::unique_ptr<PlottedByOther> plottedByQwt(bool antialiased)
{
    return std::make_unique<PlottedByQwt>(antialiased);
}
#else
std::unique_ptr<PlottedByOther> plottedByQwt(bool)
{
    return nullptr;
}
#endif

#ifdef NORVO_WITH_CHARTS
#include <QtCharts/QChartView>
#include <QtCharts/QLineSeries>
#include <QtCharts/QValueAxis>

namespace {

class PlottedByCharts : public PlottedByOther
{
public:
    PlottedByCharts()
    {
        m_view.setRenderHint(QPainter::Antialiasing);
        m_view.chart()->addAxis(m_time, Qt::AlignBottom);
        m_view.chart()->addAxis(m_value, Qt::AlignLeft);
        m_value->setRange(-1, 1);
    }

    QWidget* widget() override { return &m_view; }

    void addCurve(const QVector<QPointF>& points, const QPen& pen) override
    {
        auto* const series = new QtCharts::QLineSeries;
        series->setPen(pen);
        series->replace(points);
        m_view.chart()->addSeries(series);
        series->attachAxis(m_time);
        series->attachAxis(m_value);
    }

    void setTimeWindow(double from, double to) override { m_time->setRange(from, to); }

private:
    QtCharts::QChartView m_view;
    QtCharts::QValueAxis* m_time = new QtCharts::QValueAxis;  ///< The chart's.
    QtCharts::QValueAxis* m_value = new QtCharts::QValueAxis; ///< Likewise.
};

} // namespace

std::unique_ptr<PlottedByOther> plottedByCharts()
{
    return std::make_unique<PlottedByCharts>();
}
#else
std::unique_ptr<PlottedByOther> plottedByCharts()
{
    return nullptr;
}
#endif
