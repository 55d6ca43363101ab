// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "GuardedPanel.h"
#include "HandWays.h"
#include "host/window/access/QuestionSheet.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

/// A panel of which each control asks before it changes.
namespace asked {

inline const QByteArray kDevices =
    "devices:\n"
    "  pump: {device: button, confirm: \"Start pump 1?\", params: {text: \"&Pump\"}}\n"
    "  step: {device: button, confirm: yes, params: {text: Step, mode: click}}\n"
    "  agree: {device: checkbox, confirm: yes, params: {widget/label: Agree}}\n"
    "  speed:\n"
    "    device: slider\n"
    "    confirm: yes\n"
    "    params: {widget/orientation: horizontal, widget/maxValue: 10}\n"
    "  mode: {device: dropdownlist, confirm: yes, params: {options: Slow|Fast|Full}}\n"
    "  target: {device: input, confirm: yes, params: {name: Target, type: spin, max: 50}}\n"
    "  rate: {device: input, confirm: yes, params: {type: double, max: 50}}\n"
    "  name: {device: input, confirm: yes, params: {type: string}}\n"
    "  face:\n"
    "    device: qml_widget\n"
    "    confirm: yes\n"
    "    params: {sourceType: file, sourceData: \"" NORVO_SOURCE_DIR
    "/tests/host/window/access/Face.qml\"}\n"
    "  other: {device: button, params: {mode: click}}\n"
    "connections:\n"
    "  - other.clicked -> step.click\n";

/// What the control shows, whatever it is.
inline QString stateOf(QWidget* part)
{
    if (const auto* const button = qobject_cast<QAbstractButton*>(part)) {
        return button->isChecked() ? "on" : "off";
    }
    if (const auto* const slider = qobject_cast<QSlider*>(part)) {
        return QString::number(slider->value());
    }
    if (const auto* const list = qobject_cast<QComboBox*>(part)) {
        return list->currentText();
    }
    if (const auto* const spin = qobject_cast<QDoubleSpinBox*>(part)) {
        return spin->text();
    }
    const auto* const line = qobject_cast<QLineEdit*>(part);
    return line ? line->text() : QString();
}

inline norvo::QuestionSheet* openQuestion()
{
    return qobject_cast<norvo::QuestionSheet*>(QApplication::activeModalWidget());
}

/// Presses Yes as a person does, once it can be pressed.
inline void sayYes(norvo::QuestionSheet& question)
{
    auto* const yes = question.findChild<QPushButton*>("yes");
    QTRY_VERIFY(yes->isEnabled());
    QTest::mouseClick(yes, Qt::LeftButton);
}

} // namespace asked
