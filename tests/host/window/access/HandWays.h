// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Wheel.h"

#include <QAccessible>
#include <QCheckBox>
#include <QMimeData>
#include <QtTest>

#include <functional>

/// The ways in which a hand, or what stands for one, can reach a control.
namespace ways {

using Way = std::function<void(QWidget&)>;

inline QTouchDevice* screen()
{
    static QTouchDevice* const device = QTest::createTouchDevice();
    return device;
}

/// The middle; of a check box its mark, as it takes nothing beside its text.
inline QPoint target(const QWidget& widget)
{
    return qobject_cast<const QCheckBox*>(&widget) ? QPoint(12, widget.height() / 2)
                                                   : widget.rect().center();
}

inline void tapByTouch(QWidget& widget)
{
    const QPoint middle = target(widget);
    QWidget* const window = widget.window();
    const QPoint inWindow = widget.mapTo(window, middle);
    QTest::touchEvent(window, screen()).press(0, inWindow, window);
    QTest::touchEvent(window, screen()).release(0, inWindow, window);
}

inline void dragByTouch(QWidget& widget)
{
    QWidget* const window = widget.window();
    const QPoint from = widget.mapTo(window, widget.rect().center());
    const QPoint to = widget.mapTo(window, widget.rect().center() + QPoint(widget.width() / 3, 0));
    QTest::touchEvent(window, screen()).press(0, from, window);
    QTest::touchEvent(window, screen()).move(0, to, window);
    QTest::touchEvent(window, screen()).release(0, to, window);
}

inline void drag(QWidget& widget)
{
    const QPoint from = widget.rect().center();
    const QPoint to = from + QPoint(widget.width() / 3, -widget.height() / 3);
    QTest::mousePress(&widget, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, to);
}

inline void click(QWidget& widget)
{
    QTest::mouseClick(&widget, Qt::LeftButton, {}, target(widget));
}

inline void wheel(QWidget& widget)
{
    widget.setFocus();
    turnWheel(widget, -1);
    turnWheel(widget, 2);
}

inline Way key(Qt::Key code, Qt::KeyboardModifiers modifiers = {})
{
    return [code, modifiers](QWidget& widget) {
        widget.setFocus();
        QTest::keyClick(&widget, code, modifiers);
    };
}

/// Through the window, as a keyboard sends it: shortcuts are looked up first.
inline void mnemonic(QWidget& widget)
{
    QTest::keyClick(widget.window()->windowHandle(), Qt::Key_P, Qt::AltModifier);
}

inline void menu(QWidget& widget)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, widget.rect().center(),
                            widget.mapToGlobal(widget.rect().center()));
    QApplication::sendEvent(&widget, &event);
    if (QWidget* const popup = QApplication::activePopupWidget()) {
        popup->close();
    }
}

inline void drop(QWidget& widget)
{
    QMimeData data;
    data.setText("5");
    const QPoint middle = widget.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &enter);
    QDropEvent event(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

inline void inputMethod(QWidget& widget)
{
    QInputMethodEvent event;
    event.setCommitString("5");
    QApplication::sendEvent(&widget, &event);
}

inline Way action(const QString& name)
{
    return [name](QWidget& widget) {
        QAccessibleInterface* const shown = QAccessible::queryAccessibleInterface(&widget);
        if (shown && shown->actionInterface()) {
            shown->actionInterface()->doAction(name);
            QTest::qWait(150); // animateClick() acts after 100 ms.
        }
    };
}

inline void accessibleValue(QWidget& widget)
{
    QAccessibleInterface* const shown = QAccessible::queryAccessibleInterface(&widget);
    if (shown && shown->valueInterface()) {
        shown->valueInterface()->setCurrentValue(7);
    }
}

inline void accessibleText(QWidget& widget)
{
    QAccessibleInterface* const shown = QAccessible::queryAccessibleInterface(&widget);
    if (shown) {
        shown->setText(QAccessible::Value, "8");
        if (shown->editableTextInterface()) {
            shown->editableTextInterface()->insertText(0, "9");
        }
    }
}

inline const QMap<QString, Way>& all()
{
    static const QMap<QString, Way> ways{
        {"click", click},
        {"touch", tapByTouch},
        {"drag", drag},
        {"touch drag", dragByTouch},
        {"wheel", wheel},
        {"Space", key(Qt::Key_Space)},
        {"Enter", key(Qt::Key_Return)},
        {"Up", key(Qt::Key_Up)},
        {"Down", key(Qt::Key_Down)},
        {"Page up", key(Qt::Key_PageUp)},
        {"End", key(Qt::Key_End)},
        {"digit", key(Qt::Key_7)},
        {"letter", key(Qt::Key_F)},
        {"Backspace", key(Qt::Key_Backspace)},
        {"paste", key(Qt::Key_V, Qt::ControlModifier)},
        {"mnemonic", mnemonic},
        {"menu", menu},
        {"drop", drop},
        {"input method", inputMethod},
        {"accessible press", action("Press")},
        {"accessible toggle", action("Toggle")},
        {"accessible increase", action("Increase")},
        {"accessible value", accessibleValue},
        {"accessible text", accessibleText},
    };
    return ways;
}

} // namespace ways
