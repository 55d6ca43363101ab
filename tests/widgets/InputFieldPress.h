// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ModalDialog.h"
#include "Recorder.h"
#include "Stand.h"

#include "devices/InputDevice.h"
#include "widgets/InputFieldWidget.h"

#include <QtWidgets>
#include <QtTest>

using InputStand = Stand<InputDevice>;

/// Ways to open the dialogs of an input field and to use them.

using Use = std::function<void(QWidget&)>;

inline InputStand::Params withDialogs(InputStand::Params params)
{
    params.insert("use screen numpad", "true");
    params.insert("use screen keyboard", "true");
    return params;
}

/// A press on the editor, and the dialog that it opens used as `use` says; how many opened.
inline int press(const InputStand& stand, const Use& use)
{
    stand.widget->show();
    ModalDialog modal(use);
    QTest::mouseClick(stand.widget->findChild<QLineEdit*>(), Qt::LeftButton);
    QApplication::processEvents();
    return modal.count();
}

inline Use enter(const QString& keys)
{
    return [keys](QWidget& dialog) {
        for (const QChar key : keys) {
            tap(dialog, key == '.' ? QString("keyPoint") : QString("key") + key);
        }
        tap(dialog, "ok");
    };
}

inline QString text(QWidget& dialog, const QString& name)
{
    const auto* const line = dialog.findChild<QLineEdit*>(name);
    return line ? line->text() : dialog.findChild<QLabel*>(name)->text();
}

inline void cancel(QWidget& dialog)
{
    tap(dialog, "cancel");
}
