// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/PageProxy.h"

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

} // namespace

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
