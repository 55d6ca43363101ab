// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/HandEvents.h"

#include "norvo/BaseWidget.h"

#include <QEvent>
#include <QKeyEvent>

namespace norvo {

bool HandEvents::isTouch(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return true;
    default:
        return false;
    }
}

bool HandEvents::isDrag(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool HandEvents::isFromHand(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::Gesture:
    case QEvent::GestureOverride:
    case QEvent::NativeGesture:
        return true;
    default:
        return isTouch(event) || isDrag(event);
    }
}

BaseWidget* HandEvents::deviceOf(QObject* object)
{
    while (object && !qobject_cast<BaseWidget*>(object)) {
        object = object->parent();
    }
    return static_cast<BaseWidget*>(object);
}

bool HandEvents::movesFocus(const QEvent& key)
{
    const int code = static_cast<const QKeyEvent&>(key).key();
    return code == Qt::Key_Tab || code == Qt::Key_Backtab;
}

} // namespace norvo
