// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// What bounds the cost of scales whose marks outnumber their pixels.
namespace norvo {

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

} // namespace norvo
