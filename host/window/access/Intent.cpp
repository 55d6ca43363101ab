// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/Intent.h"

#include "norvo/NumpadDialog.h"
#include "norvo/ScreenKeyboardDialog.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QValidator>
#include <QWheelEvent>

#include <cmath>

namespace norvo {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Intent", text);
}

void sendMouse(QWidget& widget, QEvent::Type type, const QPoint& position)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(
        type, position, widget.mapToGlobal(position), isMove ? Qt::NoButton : Qt::LeftButton,
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void sendKey(QWidget& widget, QEvent::Type type, const QKeyEvent& like)
{
    QKeyEvent event(type, like.key(), like.modifiers(), like.text());
    QCoreApplication::sendEvent(&widget, &event);
}

/// A control of one value, in which it can be tried what that would become.
template <class Control, class Value>
std::optional<Intent> tried(Control& control, Value (Control::*get)() const,
                            void (Control::*set)(Value), QString (*text)(const Control&),
                            const std::function<void()>& attempt)
{
    const QSignalBlocker silence(control);
    const Value before = (control.*get)();
    attempt();
    const Value wanted = (control.*get)();
    if (wanted == before) {
        return std::nullopt;
    }
    Intent intent{text(control), {}};
    (control.*set)(before);
    const QPointer<Control> guard(&control);
    intent.perform = [guard, set, wanted] {
        if (guard) {
            (guard->*set)(wanted);
        }
    };
    return intent;
}

QString sliderText(const QAbstractSlider& slider)
{
    return QString::number(slider.value());
}

std::optional<Intent> tryOn(QWidget& control, const std::function<void()>& attempt)
{
    if (auto* const slider = qobject_cast<QAbstractSlider*>(&control)) {
        return tried<QAbstractSlider, int>(*slider, &QAbstractSlider::value,
                                           &QAbstractSlider::setValue, sliderText, attempt);
    }
    if (auto* const list = qobject_cast<QComboBox*>(&control)) {
        return tried<QComboBox, int>(
            *list, &QComboBox::currentIndex, &QComboBox::setCurrentIndex,
            [](const QComboBox& shown) { return shown.currentText(); }, attempt);
    }
    if (auto* const spin = qobject_cast<QDoubleSpinBox*>(&control)) {
        return tried<QDoubleSpinBox, double>(
            *spin, &QDoubleSpinBox::value, &QDoubleSpinBox::setValue,
            [](const QDoubleSpinBox& shown) { return shown.text(); }, attempt);
    }
    if (auto* const spin = qobject_cast<QSpinBox*>(&control)) {
        return tried<QSpinBox, int>(
            *spin, &QSpinBox::value, &QSpinBox::setValue,
            [](const QSpinBox& shown) { return shown.text(); }, attempt);
    }
    return std::nullopt;
}

template <class Spin>
std::optional<Intent> spinEntry(Spin& spin, int decimals)
{
    const QPointer<Spin> guard(&spin);
    bool isConfirmed = false;
    const double number = NumpadDialog::getDouble(
        nullptr, tr("Input value"), QString(), double(spin.value()), double(spin.minimum()),
        double(spin.maximum()), decimals, &isConfirmed, {}, double(spin.singleStep()));
    if (!guard || !isConfirmed || number == double(guard->value())) {
        return std::nullopt;
    }
    return Intent{spin.prefix() + QString::number(number, 'f', decimals) + spin.suffix(),
                  [guard, number] {
                      if (guard) {
                          using Value = decltype(guard->value());
                          guard->setValue(Value(number));
                      }
                  }};
}

/// The text that the operator gives the field; none: cancelled.
std::optional<QString> askForText(const QLineEdit& line)
{
    bool isConfirmed = false;
    QString text;
    const QString title = tr("Input value");
    const auto* const real = qobject_cast<const QDoubleValidator*>(line.validator());
    const auto* const whole = qobject_cast<const QIntValidator*>(line.validator());
    if (real) {
        constexpr int usualDecimals = 3; // Of a field that allows more than anybody types.
        const int decimals = real->decimals() < 0 ? usualDecimals : real->decimals();
        const double number = NumpadDialog::getDouble(
            nullptr, title, QString(), line.text().toDouble(), real->bottom(), real->top(),
            decimals, &isConfirmed, {}, std::pow(10, -decimals));
        text = QString::number(number, 'g', 8);
    } else if (whole) {
        const int number = NumpadDialog::getInt(nullptr, title, QString(), line.text().toInt(),
                                                whole->bottom(), whole->top(), 1, &isConfirmed, {});
        text = QString::number(number);
    } else {
        text = ScreenKeyboardDialog::getText(nullptr, title, line.text(), {}, &isConfirmed, {}, {},
                                             {});
    }
    return isConfirmed ? std::optional(text) : std::nullopt;
}

std::optional<Intent> lineEntry(QLineEdit& line)
{
    const QPointer<QLineEdit> guard(&line);
    const std::optional<QString> text = askForText(line);
    if (!guard || !text || *text == line.text()) {
        return std::nullopt;
    }
    return Intent{*text, [guard, text = *text] {
                      if (guard) {
                          guard->setText(text);
                      }
                  }};
}

} // namespace

QWidget* Intents::controlOf(QWidget& part)
{
    for (QWidget* widget = &part; widget && !widget->isWindow(); widget = widget->parentWidget()) {
        const bool isOfSpin = qobject_cast<QLineEdit*>(widget) &&
                              (qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) ||
                               qobject_cast<QComboBox*>(widget->parentWidget()));
        if (!isOfSpin &&
            (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QAbstractSlider*>(widget) ||
             qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QComboBox*>(widget) ||
             qobject_cast<QLineEdit*>(widget))) {
            return widget;
        }
    }
    return &part;
}

bool Intents::isHit(QAbstractButton& button, const QPoint& position)
{
    constexpr QPoint outside(-30000, -30000);
    const QSignalBlocker silence(button);
    sendMouse(button, QEvent::MouseButtonPress, position);
    const bool isDown = button.isDown();
    sendMouse(button, QEvent::MouseMove, outside);
    sendMouse(button, QEvent::MouseButtonRelease, outside);
    return isDown;
}

/// A state that came by wire meanwhile is not turned round.
Intent Intents::click(QAbstractButton& button)
{
    const QPointer<QAbstractButton> guard(&button);
    const bool isLatched = button.isCheckable();
    const bool wanted = !button.isChecked();
    return {!isLatched ? QString()
            : wanted   ? tr("on")
                       : tr("off"),
            [guard, isLatched, wanted] {
                if (guard && (!isLatched || guard->isChecked() != wanted)) {
                    guard->click();
                }
            }};
}

std::optional<Intent> Intents::drag(QWidget& control, const QPoint& from, const QPoint& to)
{
    return tryOn(control, [&control, &from, &to] {
        sendMouse(control, QEvent::MouseButtonPress, from);
        if (to != from) {
            sendMouse(control, QEvent::MouseMove, to);
        }
        sendMouse(control, QEvent::MouseButtonRelease, to);
    });
}

std::optional<Intent> Intents::key(QWidget& control, const QKeyEvent& event)
{
    return tryOn(control, [&control, &event] {
        sendKey(control, QEvent::KeyPress, event);
        sendKey(control, QEvent::KeyRelease, event);
    });
}

std::optional<Intent> Intents::wheel(QWidget& control, const QWheelEvent& event)
{
    return tryOn(control, [&control, &event] {
        QWheelEvent again(event);
        QCoreApplication::sendEvent(&control, &again);
    });
}

std::optional<Intent> Intents::choice(QWidget& list, int row)
{
    auto* const box = qobject_cast<QComboBox*>(&list);
    if (!box || row < 0 || row == box->currentIndex()) {
        return std::nullopt;
    }
    const QPointer<QComboBox> guard(box);
    return Intent{box->itemText(row), [guard, row] {
                      if (guard) {
                          guard->setCurrentIndex(row);
                      }
                  }};
}

std::optional<Intent> Intents::entry(QWidget& field)
{
    field.setFocus(); // The dialog names it and stands beside it.
    if (auto* const spin = qobject_cast<QDoubleSpinBox*>(&field)) {
        return spinEntry(*spin, spin->decimals());
    }
    if (auto* const spin = qobject_cast<QSpinBox*>(&field)) {
        return spinEntry(*spin, 0);
    }
    auto* const line = qobject_cast<QLineEdit*>(&field);
    return line && !line->isReadOnly() ? lineEntry(*line) : std::nullopt;
}

Intent Intents::tapAgain(QWidget& widget, const QPoint& position)
{
    const QPointer<QWidget> guard(&widget);
    return {{}, [guard, position] {
                for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                    if (guard) {
                        sendMouse(*guard, type, position);
                    }
                }
            }};
}

Intent Intents::keyAgain(QWidget& widget, const QKeyEvent& event)
{
    const QPointer<QWidget> guard(&widget);
    const QKeyEvent like(QEvent::KeyPress, event.key(), event.modifiers(), event.text());
    return {{}, [guard, key = like.key(), modifiers = like.modifiers(), text = like.text()] {
                for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                    if (guard) {
                        sendKey(*guard, type, QKeyEvent(type, key, modifiers, text));
                    }
                }
            }};
}

} // namespace norvo
