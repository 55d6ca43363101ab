// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Recorder.h"

#include "devices/InputDevice.h"
#include "widgets/InputFieldWidget.h"

#include <QtTest>

#include <memory>

/// A running field in a window of its own. The device is listened to before its widget exists, as
/// the wiring of a panel does.
struct Field
{
    explicit Field(const QString& type, const QString& max = "100")
    {
        device.setParam("type", type);
        device.setParam("min", "-100");
        device.setParam("max", max);
        device.setRunning(device.initialise());
        fromDevice = std::make_unique<Recorder>(&device);
        widget.reset(device.createWidget());
        widget->initialise();
        fromWidget = std::make_unique<Recorder>(widget.get(), BaseWidget::staticMetaObject);
        widget->show();
    }
    QLineEdit* line() const { return widget->findChild<QLineEdit*>(); } ///< Of a spin box: its own.
    QDoubleSpinBox* spinBox() const { return widget->findChild<QDoubleSpinBox*>(); }
    void invokeOnEdit(const QString& text) const
    {
        QVERIFY(QMetaObject::invokeMethod(widget.get(), "onEdit", Q_ARG(QString, text)));
    }

    InputDevice device;
    std::unique_ptr<BaseWidget> widget;
    std::unique_ptr<Recorder> fromDevice;
    std::unique_ptr<Recorder> fromWidget;
};
