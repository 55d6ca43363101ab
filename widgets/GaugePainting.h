// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QStaticText>

#include <cmath>

/// What both painted gauges need: whole pixels, marks in bounded numbers, texts laid out once.
namespace norvo {

/// A position in pixels cut toward zero. What lies further out than any screen is drawn at that
/// distance, and what is no number at 0, so that no drawing overflows.
inline int toPixel(double position)
{
    constexpr double furthest = 1e6;
    return std::isnan(position) ? 0 : int(qBound(-furthest, position, furthest));
}

/// The most marks of one kind that a scale is walked through, several for any pixel of a screen;
/// a step that would lead to more is made longer.
constexpr int kMaxMarks = 100000;
/// Lines cover a pixel in part: after so many on it further ones hardly change the picture.
constexpr int kMaxLinesPerPixel = 8;
/// Numbers as dense as that cannot be read anyway.
constexpr int kMaxNumbersPerPixel = 1;

/// Counts marks that come one after the other at the same pixel.
class MarksPerPixel
{
public:
    explicit MarksPerPixel(int max) : m_max(max) {}

    /// Whether a mark at this pixel is still to be drawn.
    bool admit(int pixel)
    {
        m_count = pixel == m_pixel ? m_count + 1 : 1;
        m_pixel = pixel;
        return m_count <= m_max;
    }

private:
    int m_max;
    int m_pixel = 0;
    int m_count = 0;
};

/// A line laid out once to be drawn often, as plain text in one font.
inline QStaticText staticLine(const QString& line, const QFont& font)
{
    QStaticText text(line);
    text.setTextFormat(Qt::PlainText);
    text.prepare({}, font);
    return text;
}

} // namespace norvo
