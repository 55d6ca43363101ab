// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/Scrim.h"

#include <QEvent>
#include <QPainter>

namespace norvo {

Scrim::Scrim(QWidget& window) : QWidget(&window)
{
    setObjectName("scrim");
    setGeometry(window.rect());
    window.installEventFilter(this);
    raise();
    show();
}

bool Scrim::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parent() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return false;
}

void Scrim::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), QColor(0, 0, 0, 120));
}

} // namespace norvo
