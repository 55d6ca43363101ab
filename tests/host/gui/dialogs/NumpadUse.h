// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ModalDialog.h"

#include "norvo/NumpadDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <limits>

/// Ways to use a NumpadDialog as a finger would.

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Answer
{
    double number = 0;
    bool ok = false;
    int dialogs = 0;
};

/// A keypad for 0 to 10 in steps of 0.5 with two decimals, used as `use` says.
inline Answer enterDouble(double start, std::function<void(QWidget&)> use)
{
    Answer answer;
    ModalDialog dialog(std::move(use));
    answer.number = NumpadDialog::getDouble(nullptr, "Input value", "", start, 0, 10, 2, &answer.ok,
                                            Qt::WindowFlags(), 0.5);
    answer.dialogs = dialog.count();
    return answer;
}

inline Answer enterInt(double start, int min, int max, int step, std::function<void(QWidget&)> use)
{
    Answer answer;
    ModalDialog dialog(std::move(use));
    answer.number = NumpadDialog::getInt(nullptr, "Input value", "", start, min, max, step,
                                         &answer.ok, Qt::WindowFlags());
    answer.dialogs = dialog.count();
    return answer;
}

inline QString shown(QWidget& dialog)
{
    return dialog.findChild<QLineEdit*>("display")->text();
}

inline QString labelled(QWidget& dialog, const QString& name)
{
    return dialog.findChild<QLabel*>(name)->text();
}

inline QColor colourOfDisplay(QWidget& dialog)
{
    return dialog.findChild<QLineEdit*>("display")->grab().toImage().pixelColor(8, 30);
}

inline bool isRed(const QColor& colour)
{
    return colour.red() > 150 && colour.green() < 80 && colour.blue() < 80;
}

inline void tapAll(QWidget& dialog, const QStringList& keys)
{
    for (const QString& key : keys) {
        tap(dialog, key);
    }
}
