// SPDX-License-Identifier: GPL-3.0-or-later

#include "benchmarks/PlottedByOthers.h"

#include <qcustomplot.h>

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct Span
{
    double least;
    double greatest;
};

/// The spans of one curve, a ring with a place for each pixel column.
struct SpanCurve
{
    QPen pen;
    QVector<QPointF> unsorted; ///< Until the plot has its size.
    std::vector<Span> spans;
};

/// Draws the spans over a plot that has axes, grid and names alone.
class SpanPlot : public QCustomPlot
{
public:
    std::vector<SpanCurve> curves;
    qint64 lastColumn = 0; ///< Since the epoch.

    int columnCount() const { return std::max(1, axisRect()->width()); }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QCustomPlot::paintEvent(event);
        QPainter painter(this);
        QVector<QLineF> lines(columnCount());
        for (const SpanCurve& curve : curves) {
            if (int(curve.spans.size()) != lines.size()) {
                continue;
            }
            for (int i = 0; i < lines.size(); ++i) {
                const Span& span = curve.spans[(lastColumn + 1 + i) % lines.size()];
                const double x = axisRect()->left() + i;
                lines[i].setLine(x, yAxis->coordToPixel(span.least), x,
                                 yAxis->coordToPixel(span.greatest));
            }
            painter.setPen(curve.pen);
            painter.drawLines(lines);
        }
    }
};

class PlottedBySpans : public PlottedByOther
{
public:
    explicit PlottedBySpans(QCustomPlot& model) : m_model(model)
    {
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
        m_plot.curves.push_back({pen, points, {}});
    }

    void advance(int curve, const QVector<QPointF>& points, double begin) override
    {
        SpanCurve& column = m_plot.curves[std::size_t(curve)];
        if (column.spans.empty()) {
            const double end = points.isEmpty() ? column.unsorted.last().x() : points.last().x();
            m_perColumn = (end - begin) / m_plot.columnCount();
            column.spans.assign(std::size_t(m_plot.columnCount()), {0, 0});
            put(column, column.unsorted);
            column.unsorted.clear();
        }
        put(column, points);
    }

    void setTimeWindow(double from, double to) override
    {
        m_plot.yAxis->setRange(m_model.yAxis->range());
        m_plot.xAxis->setRange(from, to);
        m_plot.lastColumn = columnOf(to);
        m_plot.replot(QCustomPlot::rpQueuedReplot);
    }

private:
    qint64 columnOf(double time) const { return qint64(std::floor(time / m_perColumn)); }

    void put(SpanCurve& column, const QVector<QPointF>& points) const
    {
        qint64 last = -1;
        for (const QPointF& point : points) {
            const qint64 at = columnOf(point.x());
            Span& span = column.spans[std::size_t(at) % column.spans.size()];
            span = at == last
                       ? Span{std::min(span.least, point.y()), std::max(span.greatest, point.y())}
                       : Span{point.y(), point.y()};
            last = at;
        }
    }

    SpanPlot m_plot;
    QCustomPlot& m_model;
    double m_perColumn = 1; ///< Seconds.
};

} // namespace

std::unique_ptr<PlottedByOther> plottedBySpans(QCustomPlot& model)
{
    return std::make_unique<PlottedBySpans>(model);
}
