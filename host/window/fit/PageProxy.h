// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsProxyWidget>
#include <QPointer>

class QTouchEvent;

namespace norvo {

/// Holds a page in a scene. What opens from the page, such as the list of a drop-down, is kept on
/// the page, because nothing beside it would be seen. Touches reach the part of the page that asks
/// for them; from the others, and from QML, they come as the mouse.
class PageProxy : public QGraphicsProxyWidget
{
    Q_OBJECT

public:
    PageProxy();

protected:
    bool event(QEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    bool touch(const QTouchEvent& event);

    QPointer<QWidget> m_touched; ///< By the fingers that are on the page now.
};

} // namespace norvo
