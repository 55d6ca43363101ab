// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsProxyWidget>

namespace norvo {

/// Holds a page in a scene. What opens from the page, such as the list of a drop-down, is kept on
/// the page, because nothing beside it would be seen.
class PageProxy : public QGraphicsProxyWidget
{
    Q_OBJECT

public:
    using QGraphicsProxyWidget::QGraphicsProxyWidget;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
};

} // namespace norvo
