// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include <array>
#include <vector>

class QPainter;

namespace norvo::plot {

/// Draws shapes whose outlines cross a column of pixels so often that their parts have to be summed
/// up: each pixel is painted once, as strongly as it is covered, at most wholly.
///
/// Places are pixels of the device, heights grow downwards. Shapes may come in any order, quickest
/// in that of their columns: a strip of some columns is summed up at a time, and painted when
/// another one's turn has come.
class PixelCoverage
{
public:
    /// The painter's coordinates must be the device's pixels.
    PixelCoverage(QPainter& painter, const QRect& area, const QColor& colour);
    ~PixelCoverage(); ///< Paints what is left.

    /// A part of a column's width, 1 being all of it, between two heights.
    void addBar(int column, double top, double bottom, double width);
    /// What is below a piece of a line, down to the end of the area.
    void addBelow(int column, double width, double from, double to);
    /// What was added last does so, with nothing that ends it above.
    void reachBottom() { m_last = m_area.height(); }

private:
    static constexpr int kColumns = 32;    ///< Of a strip.
    static constexpr int kWhole = 1 << 24; ///< A pixel that is wholly covered.
    static constexpr int kStrengths = 256;
    using Row = std::array<int, kColumns>;

    bool takeUp(int column, double width); ///< False: not in the area.
    void addStep(int row, double step);
    void addSlopeStep(int row, double step);
    void addEdge(double height, int covered);
    void addSlope(double top, double bottom, double width);
    void addTallSlope(double top, double bottom, double width);
    void paint();
    void paintRow(int row, const Row& covered);

    QPainter& m_painter;
    const QRect m_area;
    std::array<QRgb, kStrengths + 1> m_shades;
    QImage m_image;
    uchar* const m_pixels;
    std::vector<Row> m_steps;    ///< How much more is covered than in the row above.
    std::vector<Row> m_slopes;   ///< How much larger such a step is from this row on; if any.
    std::vector<char> m_changes; ///< Whether a row has any such step.
    bool m_hasSlopes = false;
    std::array<double, kColumns> m_widths{}; ///< All that is in the sum of each column.
    int m_strip = 0;
    int m_column = 0; ///< Of the strip, whose turn it is.
    int m_first = 0;  ///< Rows with changes; none if after the last.
    int m_last = -1;
};

} // namespace norvo::plot
