// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/qml/SharpQuickView.h"

#include "host/gui/qml/QmlLoader.h"

#include <QMouseEvent>
#include <QPainter>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QScopedValueRollback>
#include <QtMath>
#include <QWheelEvent>

namespace norvo {

SharpQuickView::SharpQuickView(QQuickWidget& widget) : QObject(&widget), m_widget(widget)
{
    QQuickWindow* const window = widget.quickWindow();
    window->contentItem()->setTransformOrigin(QQuickItem::TopLeft);
    connect(window, &QWindow::widthChanged, this, &SharpQuickView::enlarge);
    connect(window, &QWindow::heightChanged, this, &SharpQuickView::enlarge);
    // The widget asks for a part of itself, which is another one by now.
    connect(window, &QQuickWindow::afterRendering, this, [this] {
        if (!m_isAtWork) {
            m_widget.update();
        }
    });
    widget.installEventFilter(this);
    window->installEventFilter(this);
}

void SharpQuickView::setFactor(double factor)
{
    m_factor = factor;
    m_widget.quickWindow()->contentItem()->setScale(factor);
    enlarge();
    m_widget.update();
}

/// The widget gives its window the size that it has itself.
void SharpQuickView::enlarge()
{
    const QSize size(qCeil(m_widget.width() * m_factor), qCeil(m_widget.height() * m_factor));
    if (m_widget.quickWindow()->size() != size) {
        m_widget.quickWindow()->resize(size);
    }
}

bool SharpQuickView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_widget && event->type() == QEvent::Paint) {
        paint();
        return true;
    }
    if (watched == &m_widget || m_isAtWork) {
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        event->setAccepted(passOn(*static_cast<QMouseEvent*>(event)));
        return true;
    case QEvent::Wheel:
        event->setAccepted(passOn(*static_cast<QWheelEvent*>(event)));
        return true;
    default:
        return false;
    }
}

/// Without any scale left the picture is copied; smoothing it would take most of the time.
void SharpQuickView::paint()
{
    const QScopedValueRollback<bool> work(m_isAtWork, true);
    const QImage picture = m_widget.grabFramebuffer();
    QPainter painter(&m_widget);
    painter.scale(1 / m_factor, 1 / m_factor);
    painter.drawImage(QPointF(), picture);
}

bool SharpQuickView::passOn(const QMouseEvent& event)
{
    const QScopedValueRollback<bool> work(m_isAtWork, true);
    QMouseEvent enlarged(event.type(), event.localPos() * m_factor, event.windowPos() * m_factor,
                         event.screenPos(), event.button(), event.buttons(), event.modifiers(),
                         event.source());
    enlarged.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(m_widget.quickWindow(), &enlarged);
    return enlarged.isAccepted();
}

bool SharpQuickView::passOn(const QWheelEvent& event)
{
    const QScopedValueRollback<bool> work(m_isAtWork, true);
    QWheelEvent enlarged(event.position() * m_factor, event.globalPosition(), event.pixelDelta(),
                         event.angleDelta(), event.buttons(), event.modifiers(), event.phase(),
                         event.inverted(), event.source());
    enlarged.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(m_widget.quickWindow(), &enlarged);
    return enlarged.isAccepted();
}

} // namespace norvo

extern "C" Q_DECL_EXPORT void norvoSharpenQuickWidget(QWidget* widget, double factor)
{
    auto* const quick = qobject_cast<QQuickWidget*>(widget);
    if (!quick || QQuickWindow::sceneGraphBackend() != "software") {
        return;
    }
    auto* view = quick->findChild<norvo::SharpQuickView*>();
    if (!view) {
        view = new norvo::SharpQuickView(*quick);
    }
    view->setFactor(factor);
}
