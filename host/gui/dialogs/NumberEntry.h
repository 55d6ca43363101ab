// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace norvo {

/// What an entry of a number starts from and must keep to.
struct NumberLimits
{
    double start = 0;
    double min = 0;   ///< NaN: no lower end. Ends the wrong way round are swapped.
    double max = 0;   ///< NaN: no upper end.
    double step = 1;  ///< Its sign is ignored; at least one unit of the last decimal.
    int decimals = 0; ///< 0: whole numbers; held within 0 to kMaxDecimals.

    static constexpr int kMaxDecimals = 15;

    double unit() const; ///< Of the last decimal.
};

/// A number while it is being entered, key by key.
///
/// It shows the start value first; the first digit replaces that, while the sign, backspace and
/// the steps change it. The number entered is the text as it is read.
class NumberEntry
{
public:
    explicit NumberEntry(const NumberLimits& limits);

    QString text() const { return m_text; }
    std::optional<double> value() const; ///< None while the text reads as no number.
    QString error() const;               ///< Why the text cannot be accepted; empty: it can.
    bool isAcceptable() const { return error().isEmpty(); }
    bool hasPoint() const { return m_limits.decimals > 0; }

    QString rangeText() const; ///< "0 to 10", "at least 0" and so on.
    QString startText() const; ///< The start value with all its digits.

    void typeDigit(int digit); ///< Ignored when there is no decimal left for it.
    void typePoint();          ///< Ignored for whole numbers and the second time.
    void typeMinus();          ///< Begins a negative number, or turns the sign of what was typed.
    void turnSign();
    void backspace();
    void clear();
    void step(int count); ///< Up or, negative, down, but not beyond the range.

private:
    QString withDecimals(double number) const;
    bool isNegative() const { return m_text.startsWith('-'); }
    void setText(const QString& text);

    NumberLimits m_limits;
    QString m_text;
    bool m_isFresh = true;       ///< The next digit begins a new number.
    bool m_isSignChosen = false; ///< And keeps the sign that stands.
};

} // namespace norvo
