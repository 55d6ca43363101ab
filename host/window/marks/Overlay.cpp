// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/marks/Overlay.h"

#include <QEvent>

namespace norvo {

Overlay::Overlay(QWidget& display) : QWidget(display.parentWidget()), m_display(&display)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    display.installEventFilter(this);
}

bool Overlay::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::ParentChange:
        follow();
        break;
    case QEvent::ZOrderChange:
        raise();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

QRect Overlay::area(const QRect& display) const
{
    return display;
}

void Overlay::follow()
{
    if (!m_display) {
        return;
    }
    if (parentWidget() != m_display->parentWidget()) {
        setParent(m_display->parentWidget());
    }
    setGeometry(area(m_display->geometry()));
    setVisible(isWanted() && m_display->isVisibleTo(parentWidget()));
}

} // namespace norvo
