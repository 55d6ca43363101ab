// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/TapGuard.h"

#include "norvo/BaseWidget.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QMouseEvent>

#include <utility>

namespace norvo {

namespace {

TapGuard::Clock monotonicClock()
{
    QElapsedTimer clock;
    clock.start();
    return [clock] { return clock.elapsed(); };
}

bool isOfDevice(const QWidget* widget)
{
    while (widget && !qobject_cast<const BaseWidget*>(widget)) {
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return widget;
}

/// Null for everything that is not to be guarded.
QAbstractButton* latchedButton(QObject* object)
{
    auto* const button = qobject_cast<QAbstractButton*>(object);
    return button && button->isCheckable() && isOfDevice(button) ? button : nullptr;
}

} // namespace

TapGuard::TapGuard(QCoreApplication& application, Clock clock)
    : m_clock(clock ? std::move(clock) : monotonicClock())
{
    application.installEventFilter(this);
}

bool TapGuard::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (auto* const button = latchedButton(watched)) {
            return static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton && press(*button);
        }
        return false;
    case QEvent::MouseButtonRelease:
        return watched == m_button && release(*static_cast<QMouseEvent*>(event));
    default:
        return false;
    }
}

bool TapGuard::press(QAbstractButton& button)
{
    m_isSwallowing = m_button == &button && m_clock() - m_endOfTap < kPauseMs;
    m_button = &button;
    return m_isSwallowing;
}

/// A tap that did not count begins the pause again: the hand still bounces. One that slid off the
/// button was none.
bool TapGuard::release(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton) {
        return false;
    }
    if (m_button->rect().contains(event.pos())) {
        m_endOfTap = m_clock();
    } else if (!m_isSwallowing) {
        m_button.clear();
    }
    return m_isSwallowing;
}

} // namespace norvo
