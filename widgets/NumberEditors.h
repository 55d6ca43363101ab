// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDoubleSpinBox>
#include <QDoubleValidator>
#include <QIntValidator>

/// The editors of numbers, the same in every country: a typed comma is read as the decimal point,
/// as it is in a text from the wiring, and nothing separates thousands. So "3,75" passes 3, 3.7 and
/// 3.75, and never 375.

/// Shows a typed comma as a point, for its text leaves as the text of a number.
class NumberSpinBox : public QDoubleSpinBox
{
public:
    NumberSpinBox() { setLocale(QLocale::c()); }

    QValidator::State validate(QString& text, int& position) const override
    {
        text.replace(',', '.');
        return QDoubleSpinBox::validate(text, position);
    }
};

/// Leaves the text as it was typed, and judges the number that it stands for.
class NumberValidator : public QDoubleValidator
{
public:
    NumberValidator(double bottom, double top, int decimals, QObject* owner)
        : QDoubleValidator(bottom, top, decimals, owner)
    {
        setLocale(QLocale::c());
    }

    State validate(QString& text, int& position) const override
    {
        if (!text.contains(',')) {
            return QDoubleValidator::validate(text, position);
        }
        QString withPoint = text;
        withPoint.replace(',', '.');
        return QDoubleValidator::validate(withPoint, position);
    }
};

/// Lets a comma end the number: were it refused, the decimals after it would become further digits.
class IntegerValidator : public QIntValidator
{
public:
    IntegerValidator(int bottom, int top, QObject* owner) : QIntValidator(bottom, top, owner)
    {
        setLocale(QLocale::c());
    }

    State validate(QString& text, int& position) const override
    {
        const int comma = text.indexOf(',');
        QString digits = text.left(comma);
        const State state = QIntValidator::validate(digits, position);
        const bool isAtTheEnd = comma == text.size() - 1;
        return comma < 0 ? state : qMin(state, isAtTheEnd ? Intermediate : Invalid);
    }

    void fixup(QString& text) const override { text = text.left(text.indexOf(',')); }
};
