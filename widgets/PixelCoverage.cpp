// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PixelCoverage.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace norvo::plot {

PixelCoverage::PixelCoverage(QPainter& painter, const QRect& area, const QColor& colour)
    : m_painter(painter),
      m_area(area),
      m_image(kColumns, area.height(), QImage::Format_ARGB32_Premultiplied),
      m_pixels(m_image.bits()),
      m_steps(size_t(area.height()) + 2),
      m_changes(size_t(area.height()) + 2),
      m_first(area.height())
{
    const QRgb whole = colour.rgba();
    for (int i = 0; i <= kStrengths; ++i) {
        const int alpha = (qAlpha(whole) * i + kStrengths / 2) / kStrengths;
        m_shades[size_t(i)] = qPremultiply(qRgba(qRed(whole), qGreen(whole), qBlue(whole), alpha));
    }
}

PixelCoverage::~PixelCoverage()
{
    paint();
}

void PixelCoverage::addBar(int column, double top, double bottom, double width)
{
    const double from = qMax(top - m_area.top(), 0.0);
    const double to = qMin(bottom - m_area.top(), double(m_area.height()));
    if (from < to && takeUp(column, width)) {
        const int covered = int(width * kWhole);
        addEdge(from, covered);
        addEdge(to, -covered);
    }
}

void PixelCoverage::addBelow(int column, double width, double from, double to)
{
    const double end = m_area.height();
    double top = qMin(from, to) - m_area.top();
    double bottom = qMax(from, to) - m_area.top();
    if (!takeUp(column, width)) {
        return;
    }
    if (bottom <= 0 || !(top < end)) {
        addStep(bottom <= 0 ? 0 : m_area.height(), width);
        return;
    }
    const double widthOfPixel = width / qMax(bottom - top, 1e-9);
    if (bottom > end) {
        width -= widthOfPixel * (bottom - end);
        bottom = end;
    }
    if (top < 0) {
        addStep(0, widthOfPixel * -top);
        width -= widthOfPixel * -top;
        top = 0;
    }
    addSlope(top, bottom, width);
}

bool PixelCoverage::takeUp(int column, double width)
{
    constexpr double most = 100; // A sum holds somewhat more.
    const int inArea = column - m_area.left();
    if (inArea < 0 || inArea >= m_area.width()) {
        return false;
    }
    if (inArea / kColumns != m_strip) {
        paint();
        m_strip = inArea / kColumns;
    }
    m_column = inArea % kColumns;
    if (m_widths[size_t(m_column)] > most) {
        paint();
    }
    m_widths[size_t(m_column)] += std::abs(width);
    return true;
}

void PixelCoverage::addStep(int row, double step)
{
    m_steps[size_t(row)][size_t(m_column)] += int(step * kWhole);
    m_changes[size_t(row)] = true;
    m_first = qMin(m_first, row);
    m_last = qMax(m_last, row);
}

void PixelCoverage::addSlopeStep(int row, double step)
{
    m_slopes.resize(m_steps.size());
    m_slopes[size_t(row)][size_t(m_column)] += int(step * kWhole);
    m_hasSlopes = true;
}

/// All below a height is covered.
void PixelCoverage::addEdge(double height, int covered)
{
    const int row = int(height);
    const int within = int(covered * (height - row));
    m_steps[size_t(row)][size_t(m_column)] += covered - within;
    m_steps[size_t(row) + 1][size_t(m_column)] += within;
    m_changes[size_t(row)] = true;
    m_changes[size_t(row) + 1] = true;
    m_first = qMin(m_first, row);
    m_last = qMax(m_last, row + 1);
}

/// What is below a line that falls through the height.
void PixelCoverage::addSlope(double top, double bottom, double width)
{
    const int first = int(top);
    const int last = int(bottom);
    if (first == last) {
        const double covered = width * (first + 1 - (top + bottom) / 2);
        addStep(first, covered);
        addStep(first + 1, width - covered);
    } else {
        addTallSlope(top, bottom, width);
    }
}

/// Each row is covered as in its middle, but for those where the line begins and ends.
void PixelCoverage::addTallSlope(double top, double bottom, double width)
{
    const int first = int(top);
    const int last = int(bottom);
    const double slope = width / (bottom - top);
    const double atFirst = slope * (first + 1 - top) * (first + 1 - top) / 2;
    const double atLast = width - slope * (bottom - last) * (bottom - last) / 2;
    double before = atFirst;
    addStep(first, atFirst);
    if (last > first + 1) {
        const double next = slope * (first + 1.5 - top);
        addStep(first + 1, next - atFirst);
        addSlopeStep(first + 2, slope);
        addSlopeStep(last, -slope);
        before = slope * (last - 0.5 - top);
    }
    addStep(last, atLast - before);
    addStep(last + 1, width - atLast);
}

void PixelCoverage::paint()
{
    const int end = qMin(m_last + 1, m_area.height());
    Row covered{};
    Row slope{};
    for (int row = m_first; row < end; ++row) {
        if (row > m_first && !m_hasSlopes && !m_changes[size_t(row)]) {
            const size_t length = size_t(m_image.bytesPerLine());
            uchar* const line = m_pixels + size_t(row) * length;
            std::memcpy(line, line - length, length);
            continue;
        }
        const Row step = m_steps[size_t(row)];
        for (size_t i = 0; i < kColumns; ++i) {
            covered[i] += step[i];
        }
        if (m_hasSlopes) {
            const Row more = m_slopes[size_t(row)];
            for (size_t i = 0; i < kColumns; ++i) {
                slope[i] += more[i];
                covered[i] += slope[i];
            }
        }
        paintRow(row, covered);
    }
    if (m_first < end) {
        const int left = m_strip * kColumns;
        const QRect part(0, m_first, qMin(kColumns, m_area.width() - left), end - m_first);
        m_painter.drawImage(m_area.topLeft() + QPoint(left, m_first), m_image, part);
    }
    for (int row = m_first; row <= m_last; ++row) {
        if (m_changes[size_t(row)]) {
            m_steps[size_t(row)] = {};
            m_changes[size_t(row)] = false;
        }
        if (m_hasSlopes) {
            m_slopes[size_t(row)] = {};
        }
    }
    m_hasSlopes = false;
    m_widths = {};
    m_first = m_area.height();
    m_last = -1;
}

void PixelCoverage::paintRow(int row, const Row& covered)
{
    Row strength = covered;
    for (size_t i = 0; i < kColumns; ++i) {
        strength[i] = strength[i] < 0 ? 0 : strength[i];
        strength[i] = strength[i] > kWhole ? kWhole : strength[i];
        strength[i] = (strength[i] + kWhole / kStrengths / 2) / (kWhole / kStrengths);
    }
    std::array<QRgb, kColumns> pixels;
    for (size_t i = 0; i < kColumns; ++i) {
        pixels[i] = m_shades[size_t(strength[i])];
    }
    std::memcpy(m_pixels + size_t(row) * size_t(m_image.bytesPerLine()), pixels.data(),
                sizeof pixels);
}

} // namespace norvo::plot
