// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Numbers as text for the labels of a scale.
class TextHelper
{
public:
    /// `value` in fixed-point notation with `precision` digits after the point; a negative
    /// precision counts as 6, and there are 1074 at most, after which all are zeros. As the
    /// standard library's streams write it: halves to even,
    /// "-0.00" for what rounds to zero from below, "nan", "inf" and "-inf", no grouping unless the
    /// program sets a global C++ locale that groups.
    static QString doubleToStr(double value, int precision);
};
