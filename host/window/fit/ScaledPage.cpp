// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/ScaledPage.h"

#include "host/gui/QuickSharpness.h"
#include "host/window/fit/PageProxy.h"

#include <qcustomplot.h>

#include <algorithm>

namespace norvo {

namespace {

/// A plot draws itself on a picture of its own, which is to have the window's pixels. Generation 1
/// of the library draws on the page itself.
void sharpen([[maybe_unused]] QCustomPlot& plot, [[maybe_unused]] double ratio)
{
#ifdef QCUSTOMPLOT_VERSION
    plot.setBufferDevicePixelRatio(ratio);
    // It remembers the labels of its axes as pictures of the page's pixels.
    plot.setPlottingHint(QCP::phCacheLabels, qFuzzyCompare(ratio, 1));
    plot.replot(QCustomPlot::rpQueuedReplot);
#endif
}

} // namespace

ScaledPage::ScaledPage(QWidget* page, const QSize& design) : m_proxy(new PageProxy)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setRenderHint(QPainter::SmoothPixmapTransform);
    setBackgroundRole(QPalette::Window);
    setBackgroundBrush(Qt::NoBrush);
    m_proxy->setWidget(page);
    m_scene.addItem(m_proxy);
    setScene(&m_scene);
    connect(m_proxy, &QGraphicsWidget::geometryChanged, this, &ScaledPage::fitPage);
    m_proxy->setGeometry({QPointF(), design});
    fitPage();
}

QSize ScaledPage::sizeHint() const
{
    return m_proxy->size().toSize();
}

void ScaledPage::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    fitPage();
}

void ScaledPage::fitPage()
{
    const QRectF page = m_proxy->geometry();
    const double factor = std::min(width() / page.width(), height() / page.height());
    m_scene.setSceneRect(page);
    setTransform(QTransform::fromScale(factor, factor));
    for (auto* const part : m_proxy->widget()->findChildren<QWidget*>()) {
        if (part->inherits("QQuickWidget")) {
            sharpenQuickWidget(*part, factor * devicePixelRatioF());
        }
    }
    for (auto* const plot : m_proxy->widget()->findChildren<QCustomPlot*>()) {
        sharpen(*plot, std::max(1.0, factor * devicePixelRatioF()));
    }
}

} // namespace norvo
