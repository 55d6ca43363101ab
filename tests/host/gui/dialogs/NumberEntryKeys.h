// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/gui/dialogs/NumberEntry.h"

#include <QtTest>

#include <cmath>
#include <limits>

using norvo::NumberEntry;
using norvo::NumberLimits;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Digits and "." as they are; "-" is the minus of a keyboard, "s" the sign key, "<" backspace, "c"
/// clear, "u" and "d" the steps.
inline void press(NumberEntry& entry, const QString& keys)
{
    for (const QChar key : keys) {
        switch (key.unicode()) {
        case '.':
            entry.typePoint();
            break;
        case '-':
            entry.typeMinus();
            break;
        case 's':
            entry.turnSign();
            break;
        case '<':
            entry.backspace();
            break;
        case 'c':
            entry.clear();
            break;
        case 'u':
            entry.step(1);
            break;
        case 'd':
            entry.step(-1);
            break;
        default:
            entry.typeDigit(key.digitValue());
        }
    }
}

inline NumberLimits limits(double start, double min, double max, double step, int decimals)
{
    return {start, min, max, step, decimals};
}
