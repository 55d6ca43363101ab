// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/WheelGuard.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QScrollBar>

namespace norvo {

namespace {

/// Or may hold one: what a document makes of the wheel is not known.
bool holdsValue(const QWidget* widget)
{
    return qobject_cast<const QAbstractSpinBox*>(widget) ||
           qobject_cast<const QComboBox*>(widget) || widget->inherits("QQuickWidget") ||
           (qobject_cast<const QAbstractSlider*>(widget) &&
            !qobject_cast<const QScrollBar*>(widget));
}

} // namespace

WheelGuard::WheelGuard(QCoreApplication& application)
{
    application.installEventFilter(this);
}

bool WheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Polish && watched->isWidgetType()) {
        auto* const widget = static_cast<QWidget*>(watched);
        if (widget->focusPolicy() == Qt::WheelFocus) {
            widget->setFocusPolicy(Qt::StrongFocus);
        }
    } else if (event->type() == QEvent::Wheel && watched->isWidgetType()) {
        const auto* const widget = static_cast<QWidget*>(watched);
        if (holdsValue(widget) && !widget->hasFocus()) {
            event->ignore(); // It goes on to the parent.
            return true;
        }
    }
    return false;
}

} // namespace norvo
