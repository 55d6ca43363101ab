// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Declarations.h"
#include "MessageLog.h"
#include "Stand.h"

#include "devices/InputDevice.h"
#include "widgets/InputFieldWidget.h"

#include <QtWidgets>
#include <QtTest>

#include <limits>

using InputStand = Stand<InputDevice>;

/// Ways to find the parts of an input field.

/// Line, column, lines and columns of a widget in the layout, and its alignment.
inline QString placeOf(const InputStand& stand, QWidget* child)
{
    QGridLayout* const grid = stand.widget->getLayout();
    const int index = child ? grid->indexOf(child) : -1;
    if (index < 0) {
        return "none";
    }
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(index, &row, &column, &rows, &columns);
    return QString("%1 %2 %3 %4 %5")
        .arg(row)
        .arg(column)
        .arg(rows)
        .arg(columns)
        .arg(grid->itemAt(index)->alignment(), 0, 16);
}

inline QLabel* labelWith(const InputStand& stand, const QString& text)
{
    const auto labels = stand.widget->findChildren<QLabel*>();
    for (QLabel* label : labels) {
        if (label->text() == text) {
            return label;
        }
    }
    return nullptr;
}

inline QWidget* editorOf(const InputStand& stand)
{
    QWidget* const spinBox = stand.widget->findChild<QDoubleSpinBox*>();
    return spinBox ? spinBox : stand.widget->findChild<QLineEdit*>();
}

inline QString fontOf(const QWidget& widget)
{
    const QFont font = widget.font();
    return QString("%1 %2 weight %3 %4")
        .arg(font.family())
        .arg(font.pointSize())
        .arg(font.weight())
        .arg(font.italic() ? "italic" : "upright");
}

inline QString alignment(Qt::Alignment alignment)
{
    return QString::number(alignment, 16);
}
