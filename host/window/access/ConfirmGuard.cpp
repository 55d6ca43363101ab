// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/ConfirmGuard.h"

#include "host/window/access/HandEvents.h"

#include "norvo/BaseWidget.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWheelEvent>

#include <utility>

namespace norvo {

namespace {

constexpr int kTapPixels = 20; ///< More than that is a drag.

bool isField(const QWidget& control)
{
    return qobject_cast<const QLineEdit*>(&control) ||
           qobject_cast<const QAbstractSpinBox*>(&control);
}

bool isPress(const QKeyEvent& event, std::initializer_list<int> keys)
{
    return event.type() != QEvent::KeyRelease && !event.isAutoRepeat() &&
           std::find(keys.begin(), keys.end(), event.key()) != keys.end();
}

/// Opens the list and changes nothing.
bool opensList(const QKeyEvent& event)
{
    const bool isWithAlt = event.modifiers().testFlag(Qt::AltModifier);
    return event.key() == Qt::Key_F4 || event.key() == Qt::Key_Space ||
           event.key() == Qt::Key_Select ||
           (isWithAlt && (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up));
}

/// A character, or a key that edits: it opens the dialog of a field, as characters cannot be asked
/// for one by one.
bool isTyped(const QKeyEvent& event)
{
    return (!event.text().isEmpty() && event.text().front().isPrint()) ||
           isPress(event, {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2, Qt::Key_Backspace,
                           Qt::Key_Delete, Qt::Key_Select});
}

/// Whether it can be tried what the key does; in a field most keys edit.
bool steps(const QWidget& control, const QKeyEvent& event)
{
    const bool isStep = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down ||
                        event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
    return !isField(control) || isStep;
}

bool isMouse(const QEvent& event)
{
    return event.type() >= QEvent::MouseButtonPress && event.type() <= QEvent::MouseMove;
}

/// The list that a drop-down list has opened, of which `part` is a part; null for other parts.
QAbstractItemView* openedList(QWidget& part)
{
    QWidget* widget = &part;
    while (widget && !qobject_cast<QAbstractItemView*>(widget)) {
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return qobject_cast<QAbstractItemView*>(widget);
}

QComboBox* boxOf(QWidget& part)
{
    QWidget* widget = &part;
    while (widget && !qobject_cast<QComboBox*>(widget)) {
        widget = widget->parentWidget();
    }
    return qobject_cast<QComboBox*>(widget);
}

} // namespace

ConfirmGuard::ConfirmGuard(IsAsked isAsked, Ask ask)
    : m_isAsked(std::move(isAsked)), m_ask(std::move(ask))
{
    qApp->installEventFilter(this);
}

void ConfirmGuard::perform(const Intent& intent)
{
    const QScopedValueRollback<bool> passing(m_isPassing, true);
    intent.perform();
}

bool ConfirmGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (m_isPassing || !HandEvents::isFromHand(*event)) {
        return false;
    }
    BaseWidget* const device = HandEvents::deviceOf(watched);
    return device && m_isAsked(*device) && take(*device, *watched, *event);
}

bool ConfirmGuard::take(BaseWidget& device, QObject& watched, QEvent& event)
{
    if (event.type() == QEvent::Shortcut) {
        auto* const button = qobject_cast<QAbstractButton*>(&watched);
        askFor(device, button ? std::optional(Intents::click(*button)) : std::nullopt);
        return true;
    }
    if (!watched.isWidgetType()) {
        return false;
    }
    auto& part = static_cast<QWidget&>(watched);
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return openedList(part) ? takeOfList(device, part, event)
                                : takeMouse(device, part, static_cast<const QMouseEvent&>(event));
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return openedList(part) ? takeOfList(device, part, event)
                                : takeKey(device, part, static_cast<QKeyEvent&>(event));
    case QEvent::Wheel:
        return !openedList(part) && takeWheel(device, *Intents::controlOf(part), event);
    case QEvent::ShortcutOverride: // An open list chooses by it already.
        return openedList(part) && takeOfList(device, part, event);
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
        return true;
    default: // A touch comes again as the mouse.
        event.ignore();
        return !openedList(part);
    }
}

bool ConfirmGuard::takeMouse(BaseWidget& device, QWidget& part, const QMouseEvent& event)
{
    if (boxOf(part)) { // It opens the list and changes nothing.
        m_from = event.type() == QEvent::MouseMove ? m_from : event.globalPos();
        m_pressed.clear();
        return event.button() == Qt::MiddleButton;
    }
    if (event.button() == Qt::LeftButton && event.type() == QEvent::MouseButtonRelease) {
        const QPointer<QWidget> pressed(m_pressed);
        m_pressed.clear();
        if (pressed == &part) {
            release(device, part, event.pos());
        }
    } else if (event.button() == Qt::LeftButton) {
        m_pressed = &part;
        m_from = event.pos();
    }
    return true;
}

void ConfirmGuard::release(BaseWidget& device, QWidget& part, const QPoint& position)
{
    QWidget* const control = Intents::controlOf(part);
    const QScopedValueRollback<bool> passing(m_isPassing, true);
    if (auto* const button = qobject_cast<QAbstractButton*>(control)) {
        if (Intents::isHit(*button, position)) {
            askFor(device, Intents::click(*button));
        }
        return;
    }
    if (isField(*control) && qobject_cast<QLineEdit*>(&part)) {
        askLater(device, *control);
    } else if (isField(*control) || qobject_cast<QAbstractSlider*>(control)) {
        askFor(device, Intents::drag(*control, m_from, position));
    } else if ((position - m_from).manhattanLength() <= kTapPixels) {
        askFor(device, Intents::tapAgain(part, position));
    }
}

/// One without the focus leaves the wheel to the page.
bool ConfirmGuard::takeWheel(BaseWidget& device, QWidget& control, QEvent& event)
{
    event.ignore();
    if (control.hasFocus()) {
        const QScopedValueRollback<bool> passing(m_isPassing, true);
        const auto intent = Intents::wheel(control, static_cast<const QWheelEvent&>(event));
        event.setAccepted(intent.has_value());
        askFor(device, intent);
    }
    return true;
}

bool ConfirmGuard::takeKey(BaseWidget& device, QWidget& part, QKeyEvent& event)
{
    QWidget* const control = Intents::controlOf(part);
    auto* const button = qobject_cast<QAbstractButton*>(control);
    const bool isList = qobject_cast<QComboBox*>(control);
    const bool isSteady = isList || isField(*control) || qobject_cast<QAbstractSlider*>(control);
    event.ignore();
    if (HandEvents::movesFocus(event)) {
        return !isSteady && !button; // What else there is might take it for itself.
    }
    if (isList && opensList(event)) {
        return false;
    }
    if (event.type() == QEvent::KeyRelease) {
        return true;
    }
    if (button && isPress(event, {Qt::Key_Space, Qt::Key_Select})) {
        askFor(device, Intents::click(*button));
    } else if (isField(*control) && isTyped(event)) {
        askLater(device, *control);
    } else if (isSteady) {
        const QScopedValueRollback<bool> passing(m_isPassing, true);
        const auto intent = steps(*control, event) ? Intents::key(*control, event) : std::nullopt;
        event.setAccepted(intent.has_value());
        askFor(device, intent);
        return true;
    } else if (!button && !event.isAutoRepeat() && !event.text().isEmpty() &&
               event.key() != Qt::Key_Escape) {
        askFor(device, Intents::keyAgain(part, event));
    } else {
        return true; // The page may have a use for it.
    }
    event.accept();
    return true;
}

/// The list opens, scrolls and closes as ever; the choice itself is taken.
bool ConfirmGuard::takeOfList(BaseWidget& device, QWidget& part, QEvent& event)
{
    QAbstractItemView* const view = openedList(part);
    QComboBox* const box = boxOf(part);
    if (!view || !box) {
        return false;
    }
    int row = -1;
    if (event.type() == QEvent::MouseButtonPress) {
        m_pressed = &part;
    } else if (event.type() == QEvent::MouseButtonRelease) {
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        // That of the press which has opened the list chooses only after a way.
        if (!m_pressed && (mouse.globalPos() - m_from).manhattanLength() <= kTapPixels) {
            return true;
        }
        m_pressed.clear();
        row = view->indexAt(view->viewport()->mapFromGlobal(mouse.globalPos())).row();
    } else if (!isMouse(event) &&
               isPress(static_cast<const QKeyEvent&>(event),
                       {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Select, Qt::Key_Space})) {
        row = view->currentIndex().row();
    }
    if (row < 0) {
        return false;
    }
    box->hidePopup();
    askFor(device, Intents::choice(*box, row));
    return true;
}

/// Not within the event: the dialog runs until it is closed.
void ConfirmGuard::askLater(BaseWidget& device, QWidget& field)
{
    if (m_isEntering) {
        return;
    }
    m_isEntering = true;
    const QPointer<BaseWidget> widget(&device);
    const QPointer<QWidget> guard(&field);
    QTimer::singleShot(0, this, [this, widget, guard] {
        const auto intent = guard ? Intents::entry(*guard) : std::nullopt;
        m_isEntering = false;
        if (widget) {
            askFor(*widget, intent);
        }
    });
}

void ConfirmGuard::askFor(BaseWidget& device, const std::optional<Intent>& intent)
{
    if (intent) {
        m_ask(device, *intent);
    }
}

} // namespace norvo
