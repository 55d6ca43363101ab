// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/LockGuard.h"

#include "host/window/access/HandEvents.h"

#include "norvo/BaseWidget.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>

#include <utility>

namespace norvo {

namespace {

constexpr int kTapPixels = 20; ///< More than that is a drag.

/// What shows that somebody is there; the pointer may move by itself.
bool isSignOfLife(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

bool asksToAct(const QEvent& key)
{
    const auto& event = static_cast<const QKeyEvent&>(key);
    const int code = event.key();
    return !event.isAutoRepeat() && (code == Qt::Key_Space || code == Qt::Key_Return ||
                                     code == Qt::Key_Enter || code == Qt::Key_Select);
}

} // namespace

LockGuard::LockGuard(IsLocked isLocked) : m_isLocked(std::move(isLocked))
{
    qApp->installEventFilter(this);
}

bool LockGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (m_isEnforcing || !HandEvents::isFromHand(*event)) {
        return false;
    }
    if (isSignOfLife(*event)) {
        emit input();
    }
    BaseWidget* const device = HandEvents::deviceOf(watched);
    if (!device) {
        return false;
    }
    if (m_isLocked(*device)) {
        return refuse(*device, *event);
    }
    if (watched->isWidgetType()) {
        m_hands.see(*static_cast<QWidget*>(watched), *event);
        emit handOn(m_hands.isAnyOn());
    }
    return false;
}

/// What is ignored goes on to the page, and a touch comes again as the mouse.
bool LockGuard::refuse(BaseWidget& device, QEvent& event)
{
    event.setAccepted(false);
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        event.accept();
        refuseMouse(device, event);
        break;
    case QEvent::KeyPress:
        if (asksToAct(event)) {
            event.accept();
            emit touched(&device);
        }
        break;
    case QEvent::Shortcut:
        event.accept();
        emit touched(&device);
        break;
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
        event.accept();
        break;
    default:
        break;
    }
    return true;
}

void LockGuard::refuseMouse(BaseWidget& device, const QEvent& event)
{
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    if (mouse.button() != Qt::LeftButton) {
        return;
    }
    if (event.type() != QEvent::MouseButtonRelease) {
        m_tapped = &device;
        m_tapPosition = mouse.globalPos();
        return;
    }
    const bool isTap =
        m_tapped == &device && (mouse.globalPos() - m_tapPosition).manhattanLength() <= kTapPixels;
    m_tapped.clear();
    if (isTap) {
        emit touched(&device);
    }
}

void LockGuard::enforce()
{
    m_isEnforcing = true; // What takes a hand off is to arrive.
    m_hands.takeOff();
    m_isEnforcing = false;
    emit handOn(false);
    while (QWidget* const popup = QApplication::activePopupWidget()) {
        if (!popup->close()) {
            break;
        }
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        auto* const dialog = qobject_cast<QDialog*>(window);
        if (dialog && dialog->isVisible() && dialog->isModal()) {
            dialog->reject();
        }
    }
}

} // namespace norvo
