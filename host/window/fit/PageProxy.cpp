// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/PageProxy.h"

#include <QCoreApplication>
#include <QTouchEvent>
#include <QWidget>

#include <algorithm>

namespace norvo {

namespace {

void moveInside(QGraphicsWidget& item, const QRectF& space)
{
    const QRectF box = item.geometry();
    const QPointF place(std::max(space.left(), std::min(box.x(), space.right() - box.width())),
                        std::max(space.top(), std::min(box.y(), space.bottom() - box.height())));
    item.setPos(place);
}

/// Null: nothing there takes touches.
QWidget* touchableAt(const QWidget& page, const QPoint& place)
{
    QWidget* part = page.childAt(place);
    while (part && !part->testAttribute(Qt::WA_AcceptTouchEvents)) {
        part = part->parentWidget();
    }
    return part && !part->inherits("QQuickWidget") ? part : nullptr;
}

} // namespace

PageProxy::PageProxy()
{
    setAcceptTouchEvents(true);
}

bool PageProxy::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        event->setAccepted(touch(*static_cast<QTouchEvent*>(event)));
        return true;
    default:
        return QGraphicsProxyWidget::event(event);
    }
}

bool PageProxy::touch(const QTouchEvent& event)
{
    QList<QTouchEvent::TouchPoint> points = event.touchPoints();
    if (event.type() == QEvent::TouchBegin) {
        m_touched = touchableAt(*widget(), points.value(0).pos().toPoint());
    }
    if (!m_touched) {
        return false;
    }
    const QPointF origin = m_touched->mapTo(widget(), QPoint());
    for (QTouchEvent::TouchPoint& point : points) {
        point.setPos(point.pos() - origin);
        point.setStartPos(point.startPos() - origin);
        point.setLastPos(point.lastPos() - origin);
    }
    QTouchEvent mapped(event.type(), event.device(), event.modifiers(), event.touchPointStates(),
                       points);
    return QCoreApplication::sendEvent(m_touched, &mapped) && mapped.isAccepted();
}

QVariant PageProxy::itemChange(GraphicsItemChange change, const QVariant& value)
{
    auto* const child = value.value<QGraphicsItem*>();
    if (change == ItemChildAddedChange && child && child->isWidget()) {
        auto* const opened = static_cast<QGraphicsWidget*>(child);
        connect(opened, &QGraphicsWidget::geometryChanged, this,
                [this, opened] { moveInside(*opened, rect()); });
    }
    return QGraphicsProxyWidget::itemChange(change, value);
}

} // namespace norvo
