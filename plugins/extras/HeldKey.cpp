// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HeldKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QTouchEvent>

HeldKey::HeldKey(const QString& text, QWidget* parent) : QPushButton(text, parent)
{
    setAttribute(Qt::WA_AcceptTouchEvents);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred);
}

HeldKey::~HeldKey()
{
    letGo();
}

QSize HeldKey::sizeHint() const
{
    return QPushButton::sizeHint().expandedTo({kMinSide, kMinSide});
}

bool HeldKey::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        event->accept();
        touch(*static_cast<QTouchEvent*>(event));
        return true;
    case QEvent::Show:
        window()->installEventFilter(this); // a window does not pass on that it is blocked
        break;
    default:
        break;
    }
    const QPointer<HeldKey> self(this);
    const bool isHandled = QPushButton::event(event);
    if (self && takesAway(*event)) {
        letGo();
    }
    return isHandled;
}

bool HeldKey::takesAway(const QEvent& event) const
{
    switch (event.type()) {
    case QEvent::FocusOut: // to another key under another finger: both are held
        return m_hand != Hand::Touch || !qobject_cast<HeldKey*>(QApplication::focusWidget());
    case QEvent::EnabledChange:
        return !isEnabled();
    case QEvent::Hide:
    case QEvent::TouchCancel:
    case QEvent::UngrabMouse:
    case QEvent::WindowDeactivate:
        return true;
    default:
        return false;
    }
}

bool HeldKey::eventFilter(QObject* /*window*/, QEvent* event)
{
    if (event->type() == QEvent::WindowBlocked) {
        letGo();
    }
    return false;
}

void HeldKey::touch(const QTouchEvent& event)
{
    if (event.type() == QEvent::TouchBegin) {
        m_finger = event.touchPoints().constFirst().id();
        take(Hand::Touch);
        return;
    }
    for (const QTouchEvent::TouchPoint& point : event.touchPoints()) {
        const bool isOff =
            point.state() == Qt::TouchPointReleased || !rect().contains(point.pos().toPoint());
        if (m_hand == Hand::Touch && point.id() == m_finger && isOff) {
            letGo();
            return;
        }
    }
}

void HeldKey::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        take(Hand::Mouse);
    }
}

void HeldKey::mouseMoveEvent(QMouseEvent* event)
{
    if (m_hand == Hand::Mouse && !rect().contains(event->pos())) {
        letGo();
    }
}

void HeldKey::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_hand == Hand::Mouse && event->button() == Qt::LeftButton) {
        letGo();
    }
}

void HeldKey::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space) {
        event->ignore();
    } else if (!event->isAutoRepeat()) {
        take(Hand::SpaceBar);
    }
}

void HeldKey::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space) {
        event->ignore();
    } else if (m_hand == Hand::SpaceBar && !event->isAutoRepeat()) {
        letGo();
    }
}

void HeldKey::take(Hand hand)
{
    if (m_hand == Hand::None) {
        m_hand = hand;
        emit handOn();
    }
}

void HeldKey::letGo()
{
    if (m_hand != Hand::None) {
        m_hand = Hand::None;
        emit handOff();
    }
}

/// What the style shows of a key that is down is mostly under the finger: a frame tells it, too.
void HeldKey::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (isDown()) {
        constexpr int width = 4;
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::ButtonText), width, Qt::SolidLine,
                            Qt::SquareCap, Qt::MiterJoin));
        constexpr int inset = width / 2 + 2;
        painter.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
    }
}
