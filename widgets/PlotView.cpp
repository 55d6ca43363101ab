// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotView.h"

#include "widgets/Looks.h"

#include <QEvent>

PlotView::PlotView(const Look& look) : m_look(look)
{
    norvo::plot::drawAllAtOnce(*this);
    norvo::plot::keepNumbers(xAxis); // A graph of time puts times in their place.
    norvo::plot::keepNumbers(yAxis);
    recolour();
}

/// The library takes its parts down from the last one on, and looks each up in lists from the first
/// one on. From the first one on, that takes no time.
PlotView::~PlotView()
{
    if (legend) {
        const norvo::plot::ChildrenSetAside children(*this);
        for (int i = 0, count = legend->elementCount(); i < count; ++i) {
            legend->removeAt(i);
        }
        legend->simplify();
    }
    while (plottableCount() > 0) {
        removePlottable(0);
    }
}

void PlotView::refresh(QCustomPlot::RefreshPriority priority)
{
    m_stale = !canBeSeen();
    if (!m_stale) {
        replot(priority);
    }
}

bool PlotView::canBeSeen() const
{
    return isVisible() && !size().isEmpty() && !window()->isMinimized();
}

QSize PlotView::minimumSizeHint() const
{
    return QSize(7, 6) * fontMetrics().height();
}

void PlotView::changeEvent(QEvent* event)
{
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        recolour();
    }
}

void PlotView::showEvent(QShowEvent* event)
{
    QCustomPlot::showEvent(event);
    window()->installEventFilter(this);
}

/// A window that is restored need not paint what it has painted before.
bool PlotView::eventFilter(QObject* watched, QEvent* event)
{
    if (m_stale && event->type() == QEvent::WindowStateChange) {
        update();
    }
    return QCustomPlot::eventFilter(watched, event);
}

/// A layout may leave it no room for a moment; a picture of no size cannot be drawn into.
void PlotView::resizeEvent(QResizeEvent* event)
{
    if (size().isEmpty()) {
        m_stale = true;
        return;
    }
    QCustomPlot::resizeEvent(event); // draws it
    m_stale = false;
}

void PlotView::paintEvent(QPaintEvent* event)
{
    if (m_stale) {
        m_stale = false;
        replot(norvo::plot::kReplotWithinPaint);
    }
    QCustomPlot::paintEvent(event);
}

void PlotView::recolour()
{
    const QColor text = palette().color(QPalette::Current, QPalette::Text);
    const QPen line = norvo::Looks::plotLine(text);

    setAntialiasedElements(QCP::aeAll);
    setBackground(QBrush(palette().color(QPalette::Current, QPalette::Base)));
    for (QCPAxis* axis : {xAxis, yAxis}) {
        axis->setLabelColor(text);
        axis->setBasePen(line);
        axis->setTickPen(line);
        axis->setSubTickPen(line);
        axis->setTickLabelColor(text);
        axis->grid()->setPen(norvo::Looks::plotLine(text, Qt::DotLine));
        if (m_look.zeroLineInTextColour) {
            axis->grid()->setZeroLinePen(line);
        }
    }
    legend->setTextColor(text);
    legend->setBrush(palette().brush(QPalette::Current, QPalette::Window));
    refresh(m_look.recolourPriority);
}
