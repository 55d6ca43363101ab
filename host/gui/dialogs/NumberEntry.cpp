// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/NumberEntry.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace norvo {
namespace {

constexpr int kMaxTextLength = 40;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

QString tr(const char* text)
{
    return QCoreApplication::translate("NumpadDialog", text);
}

/// As short as it can be written: "10", "0.25", "1e+300".
QString shortText(double number)
{
    return std::isnan(number) ? QString(QChar(0x2014)) : QString::number(number, 'g', 15);
}

NumberLimits normalised(NumberLimits limits)
{
    limits.min = std::isnan(limits.min) ? -kInfinity : limits.min;
    limits.max = std::isnan(limits.max) ? kInfinity : limits.max;
    if (limits.min > limits.max) {
        std::swap(limits.min, limits.max);
    }
    limits.decimals = qBound(0, limits.decimals, NumberLimits::kMaxDecimals);
    const double step = std::abs(limits.step);
    limits.step = std::isfinite(step) ? std::max(step, limits.unit()) : limits.unit();
    return limits;
}

} // namespace

double NumberLimits::unit() const
{
    return std::pow(10, -decimals);
}

NumberEntry::NumberEntry(const NumberLimits& limits)
    : m_limits(normalised(limits)), m_text(withDecimals(m_limits.start))
{}

QString NumberEntry::withDecimals(double number) const
{
    constexpr double longNumber = 1e15;
    if (!std::isfinite(number)) {
        return {};
    }
    if (std::abs(number) >= longNumber) {
        return shortText(number);
    }
    const QString text = QString::number(number, 'f', m_limits.decimals);
    return text.toDouble() == 0 && text.startsWith('-') ? text.mid(1) : text;
}

std::optional<double> NumberEntry::value() const
{
    bool ok = false;
    const double number = m_text.toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number + 0.0) : std::nullopt; // no -0
}

QString NumberEntry::error() const
{
    const std::optional<double> number = value();
    if (!number) {
        return m_text.isEmpty() ? tr("Enter a number") : tr("This is not a number");
    }
    if (*number < m_limits.min) {
        return tr("Below the lowest value allowed, %1").arg(shortText(m_limits.min));
    }
    if (*number > m_limits.max) {
        return tr("Above the highest value allowed, %1").arg(shortText(m_limits.max));
    }
    return {};
}

QString NumberEntry::rangeText() const
{
    const bool hasMin = m_limits.min > -std::numeric_limits<double>::max();
    const bool hasMax = m_limits.max < std::numeric_limits<double>::max();
    if (hasMin && hasMax) {
        return tr("%1 to %2").arg(shortText(m_limits.min), shortText(m_limits.max));
    }
    if (hasMin) {
        return tr("at least %1").arg(shortText(m_limits.min));
    }
    return hasMax ? tr("at most %1").arg(shortText(m_limits.max)) : tr("any number");
}

QString NumberEntry::startText() const
{
    return shortText(m_limits.start);
}

void NumberEntry::setText(const QString& text)
{
    m_text = text;
    m_isFresh = false;
}

void NumberEntry::typeDigit(int digit)
{
    if (m_isFresh) {
        setText(m_isSignChosen && isNegative() ? "-" : "");
    }
    const int point = m_text.indexOf('.');
    const bool isFull = point >= 0 && m_text.size() - point > m_limits.decimals;
    if (isFull || m_text.size() >= kMaxTextLength) {
        return;
    }
    if (m_text == "0" || m_text == "-0") {
        m_text.chop(1);
    }
    setText(m_text + QString::number(digit));
}

void NumberEntry::typePoint()
{
    if (!hasPoint()) {
        return;
    }
    if (m_isFresh) {
        setText(m_isSignChosen && isNegative() ? "-" : "");
    }
    if (!m_text.contains('.')) {
        setText(m_text + (m_text.isEmpty() || m_text == "-" ? "0." : "."));
    }
}

void NumberEntry::typeMinus()
{
    if (m_isFresh) {
        setText("-");
    } else {
        turnSign();
    }
}

void NumberEntry::turnSign()
{
    m_text = isNegative() ? m_text.mid(1) : "-" + m_text;
    m_isSignChosen = true;
}

void NumberEntry::backspace()
{
    if (m_text.contains('e')) { // a number too long to be written in full
        clear();
    } else {
        setText(m_text.left(m_text.size() - 1));
    }
}

void NumberEntry::clear()
{
    setText({});
}

void NumberEntry::step(int count)
{
    double from = value().value_or(m_limits.start);
    if (!std::isfinite(from)) {
        from = 0;
    }
    const double to = qBound(m_limits.min, from + count * m_limits.step, m_limits.max);
    m_text = withDecimals(to);
    const double written = m_text.toDouble(); // rounded, and so beyond an end perhaps
    if (written < m_limits.min) {
        m_text = withDecimals(written + m_limits.unit());
    } else if (written > m_limits.max) {
        m_text = withDecimals(written - m_limits.unit());
    }
    m_isFresh = true;
    m_isSignChosen = false;
}

} // namespace norvo
