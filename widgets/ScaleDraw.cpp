// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ScaleDraw.h"

#include "norvo/Truncation.h"
#include "widgets/GaugePainting.h"
#include "widgets/Looks.h"
#include "widgets/TextHelper.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Looks = norvo::Looks;
using norvo::toPixel;

namespace {

constexpr int kMarginDashes = 2;
constexpr double kShortTickShare = 0.4;
constexpr double kLongTickShare = 0.6;
constexpr double kTickTopShare = 0.07;

/// How many ticks a range has with `more` than its own; 0 where they cannot be counted.
int tickCount(double range, double step, int more)
{
    if (!(step > 0.0) || !std::isfinite(range)) {
        return 0;
    }
    return int(std::min(std::ceil(range / step + more), double(norvo::kMaxMarks)));
}

/// From tick to tick; 0 where there are less than two.
double pixelStep(double length, int count)
{
    return count > 1 ? length / (count - 1) : 0.0;
}

} // namespace

ScaleDraw::ScaleDraw(double min, double max, double digitsStep, double dashesStep, double precision)
    : m_font(Looks::scaleFont()), m_metrics(m_font)
{
    setRange(min, max, digitsStep, dashesStep, precision);
}

void ScaleDraw::setRange(double min, double max, double digitsStep, double dashesStep,
                         double precision)
{
    m_min = min;
    m_max = max;
    m_digitsStep = digitsStep;
    m_dashesStep = dashesStep;
    m_precision = precision;
    setGreenZone(min, max);
    calcRanges();
}

void ScaleDraw::setGreenZone(double low, double high)
{
    m_greenLow = low;
    m_greenHigh = high;
}

void ScaleDraw::setRegion(const QRect& region)
{
    m_region = region;
    calcRanges();
}

void ScaleDraw::getValuePxRange(double& start, double& end) const
{
    start = m_startX;
    end = m_startX + m_pixelLength;
}

void ScaleDraw::calcRanges()
{
    const int width = m_region.width();
    m_range = std::abs(m_max - m_min);
    m_dashCount = tickCount(m_range, m_dashesStep, 2 * kMarginDashes + 1);
    m_dashPixelStep = pixelStep(width, m_dashCount);

    m_startX = m_region.left() + kMarginDashes * m_dashPixelStep;
    m_pixelLength = width - 2 * kMarginDashes * m_dashPixelStep;

    m_digitCount = tickCount(m_range, m_digitsStep, 1);
    m_digitPixelStep = pixelStep(m_pixelLength, m_digitCount);
    layOutNumbers();
}

void ScaleDraw::layOutNumbers()
{
    m_numbers.clear();
    m_numbersBox = QRect();
    const int decimals = norvo::truncatedToInt(m_precision);
    const double step = std::max(m_digitsStep, m_range / norvo::kMaxMarks);
    const double ascent = QFontMetricsF(m_font).ascent();
    norvo::MarksPerPixel numbers(norvo::kMaxNumbersPerPixel);
    double value = m_min;
    for (int j = 0; j < m_digitCount; ++j, value += step) {
        if (numbers.admit(toPixel(digitX(j)))) {
            const QString text = TextHelper::doubleToStr(value, decimals);
            const QPoint baseline = textPosition(j, m_metrics.horizontalAdvance(text));
            m_numbers.push_back({baseline - QPointF(0.0, ascent), norvo::staticLine(text, m_font)});
            m_numbersBox |= m_metrics.boundingRect(text).translated(baseline);
        }
    }
}

QRect ScaleDraw::greenZone() const
{
    const double left = (m_greenLow - m_min) / m_range * m_pixelLength + m_startX;
    const double width = m_pixelLength * std::abs(m_greenHigh - m_greenLow) / m_range;
    if (!std::isfinite(left) || !std::isfinite(width)) {
        return {};
    }
    return {toPixel(left), m_region.top(), toPixel(width), m_region.height()};
}

QLine ScaleDraw::dash(int i) const
{
    return tick(m_region.left() + i * m_dashPixelStep, kShortTickShare);
}

QLine ScaleDraw::tick(double x, double heightShare) const
{
    const double margin = kTickTopShare * m_region.height();
    return {toPixel(x), toPixel(m_region.top() + margin), toPixel(x),
            toPixel(m_region.top() + m_region.height() * heightShare + margin)};
}

double ScaleDraw::digitX(int j) const
{
    return m_startX + j * m_digitPixelStep;
}

QLine ScaleDraw::digitDash(int j) const
{
    return tick(digitX(j), kLongTickShare);
}

QPoint ScaleDraw::textPosition(int j, int textWidth) const
{
    return {toPixel(digitX(j) - textWidth / 2.0),
            toPixel(m_metrics.height() + m_region.top() + m_region.height() * kLongTickShare)};
}

void ScaleDraw::draw(QPainter& painter) const
{
    drawZones(painter);
    drawDashes(painter);
    drawText(painter);
}

void ScaleDraw::drawZones(QPainter& painter) const
{
    painter.setPen(Looks::kBandEdge);
    painter.setBrush(Looks::kRedBand);
    painter.drawRect(m_region);

    painter.setPen(Qt::NoPen);
    painter.setBrush(Looks::kGreenZone);
    const QRect green = greenZone();
    if (!green.isEmpty()) {
        painter.drawRect(green);
    }
}

void ScaleDraw::drawDashes(QPainter& painter) const
{
    painter.setPen(Looks::kTicks);
    norvo::MarksPerPixel shortTicks(norvo::kMaxLinesPerPixel);
    for (int i = 0; i < m_dashCount; ++i) {
        if (shortTicks.admit(dash(i).x1())) {
            painter.drawLine(dash(i));
        }
    }
    norvo::MarksPerPixel longTicks(norvo::kMaxLinesPerPixel);
    for (int j = 0; j < m_digitCount; ++j) {
        if (longTicks.admit(digitDash(j).x1())) {
            painter.drawLine(digitDash(j));
        }
    }
}

void ScaleDraw::drawText(QPainter& painter) const
{
    painter.setPen(Looks::kTicks);
    painter.setFont(m_font);
    for (const auto& [topLeft, text] : m_numbers) {
        painter.drawStaticText(topLeft, text);
    }
}
