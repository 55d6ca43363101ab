// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/Hands.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QTouchEvent>

namespace norvo {

namespace {

/// Far away from every widget.
constexpr QPoint kOutside(-30000, -30000);

void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& position, Qt::MouseButtons buttons)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, widget.mapToGlobal(position), button, buttons,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

/// A slider takes a value from where the mouse is.
bool followsMouse(const QWidget& widget)
{
    return qobject_cast<const QAbstractSlider*>(&widget) ||
           qobject_cast<const QAbstractSpinBox*>(&widget);
}

} // namespace

void Hands::see(QWidget& widget, const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_pressed = &widget;
        m_position = static_cast<const QMouseEvent&>(event).pos();
        break;
    case QEvent::MouseMove:
        m_position = static_cast<const QMouseEvent&>(event).pos();
        break;
    case QEvent::MouseButtonRelease:
        m_pressed.clear();
        break;
    case QEvent::TouchBegin:
        m_touched = &widget;
        break;
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        m_touched.clear();
        break;
    case QEvent::KeyPress:
        m_keyed = &widget;
        break;
    case QEvent::KeyRelease:
        m_keyed.clear();
        break;
    default:
        break;
    }
}

void Hands::takeOff()
{
    if (m_pressed) {
        release();
    }
    if (m_touched) {
        QTouchEvent cancel(QEvent::TouchCancel);
        QCoreApplication::sendEvent(m_touched, &cancel);
    }
    if (m_keyed && m_keyed->hasFocus()) {
        const QPointer<QWidget> widget(m_keyed);
        widget->clearFocus();
        if (widget) {
            widget->setFocus();
        }
    }
    *this = Hands();
}

void Hands::release()
{
    const QPointer<QWidget> widget(m_pressed);
    if (!followsMouse(*widget)) {
        m_position = kOutside;
        sendMouse(*widget, QEvent::MouseMove, m_position, Qt::LeftButton);
    }
    if (widget) {
        sendMouse(*widget, QEvent::MouseButtonRelease, m_position, Qt::NoButton);
    }
}

} // namespace norvo
