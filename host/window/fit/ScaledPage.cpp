// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/ScaledPage.h"

#include "host/gui/QuickSharpness.h"
#include "host/plots/PlotLibrary.h"
#include "host/window/fit/PageProxy.h"

#include <QChildEvent>

#include <algorithm>

namespace norvo {

namespace {

void sharpenPlot(QWidget& plot, double ratio)
{
    if (const PlotLibrary* const plots = plotLibrary()) {
        plots->sharpen(plot, ratio);
    }
}

QWidgetList withParts(QWidget& whole)
{
    return QWidgetList{&whole} + whole.findChildren<QWidget*>();
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
    watch(*page);
    fitPage();
}

void ScaledPage::givePageBack()
{
    QWidget& page = *m_proxy->widget();
    disconnect(m_proxy, nullptr, this, nullptr);
    for (QWidget* const watched : withParts(page)) {
        watched->removeEventFilter(this);
    }
    m_proxy->setWidget(nullptr);
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
    m_factor = std::min(width() / page.width(), height() / page.height());
    m_scene.setSceneRect(page);
    setTransform(QTransform::fromScale(m_factor, m_factor));
    for (QWidget* const part : withParts(*m_proxy->widget())) {
        sharpen(*part);
    }
}

void ScaledPage::sharpen(QWidget& part)
{
    const double ratio = m_factor * devicePixelRatioF();
    if (part.inherits("QQuickWidget")) {
        sharpenQuickWidget(part, ratio);
    } else if (isPlot(part)) {
        sharpenPlot(part, std::max(1.0, ratio));
    }
}

void ScaledPage::watch(QWidget& part)
{
    for (QWidget* const watched : withParts(part)) {
        watched->installEventFilter(this);
    }
}

/// A widget that comes later is made known to the one that it stands in before it is first seen.
bool ScaledPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ChildPolished) {
        QObject* const child = static_cast<QChildEvent*>(event)->child();
        if (child->isWidgetType()) {
            auto& part = static_cast<QWidget&>(*child);
            watch(part);
            for (QWidget* const late : withParts(part)) {
                sharpen(*late);
            }
        }
    }
    return QGraphicsView::eventFilter(watched, event);
}

} // namespace norvo
