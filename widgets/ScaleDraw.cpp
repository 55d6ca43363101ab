#include "widgets/ScaleDraw.h"

#include "norvo/Truncation.h"
#include "widgets/Pixels.h"
#include "widgets/TextHelper.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr int kMarginDashes = 2;
constexpr double kShortTickShare = 0.4;
constexpr double kLongTickShare = 0.6;
constexpr double kTickTopShare = 0.07;

/// How many ticks a range has with `more` than its own; 0 for steps that lead nowhere.
double tickCount(double range, double step, int more)
{
    return step > 0.0 ? std::ceil(range / step + more) : 0.0;
}

/// From tick to tick; 0 where there are less than two, or so many that it comes to nothing.
double pixelStep(double length, double count)
{
    return count > 1.0 ? length / (count - 1.0) : 0.0;
}

/// How many ticks are drawn: all, or none where they would outnumber the pixels.
int drawableCount(double count, int pixels)
{
    return count >= 1.0 && count <= pixels ? int(count) : 0;
}

} // namespace

ScaleDraw::ScaleDraw(double min, double max, double digitsStep, double dashesStep, double precision)
    : m_framePen(QColor("#C8C8C8")),
      m_tickPen(QColor("#F0F0F0"), 2),
      m_redBrush(QColor("#FD454D")),
      m_greenBrush(QColor("#049143")),
      m_font("Arial", 14, QFont::Bold, false),
      m_metrics(m_font)
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
    const double dashes = tickCount(m_range, m_dashesStep, 2 * kMarginDashes + 1);
    m_dashCount = drawableCount(dashes, width);
    m_dashPixelStep = pixelStep(width, dashes);

    m_startX = m_region.left() + kMarginDashes * m_dashPixelStep;
    m_pixelLength = width - 2 * kMarginDashes * m_dashPixelStep;

    const double digits = tickCount(m_range, m_digitsStep, 1);
    m_digitCount = drawableCount(digits, width);
    m_digitPixelStep = pixelStep(m_pixelLength, digits);
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
    const double margin = kTickTopShare * m_region.height();
    const int x = toPixel(m_region.left() + i * m_dashPixelStep);
    return {x, toPixel(m_region.top() + margin), x,
            toPixel(m_region.top() + m_region.height() * kShortTickShare + margin)};
}

double ScaleDraw::digitX(int j) const
{
    return m_startX + j * m_digitPixelStep;
}

QLine ScaleDraw::digitDash(int j) const
{
    const double margin = kTickTopShare * m_region.height();
    const int x = toPixel(digitX(j));
    return {x, toPixel(m_region.top() + margin), x,
            toPixel(m_region.top() + m_region.height() * kLongTickShare + margin)};
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
    painter.setPen(m_framePen);
    painter.setBrush(m_redBrush);
    painter.drawRect(m_region);

    painter.setPen(Qt::NoPen);
    painter.setBrush(m_greenBrush);
    const QRect green = greenZone();
    if (!green.isEmpty()) {
        painter.drawRect(green);
    }
}

void ScaleDraw::drawDashes(QPainter& painter) const
{
    painter.setPen(m_tickPen);
    for (int i = 0; i < m_dashCount; ++i) {
        painter.drawLine(dash(i));
    }
    for (int j = 0; j < m_digitCount; ++j) {
        painter.drawLine(digitDash(j));
    }
}

void ScaleDraw::drawText(QPainter& painter) const
{
    painter.setPen(m_tickPen);
    painter.setFont(m_font);
    const int decimals = norvo::truncatedToInt(m_precision);
    double value = m_min;
    for (int j = 0; j < m_digitCount; ++j) {
        const QString text = TextHelper::doubleToStr(value, decimals);
        const int width = m_metrics.horizontalAdvance(text);
        painter.drawText(textPosition(j, width), text);
        value += m_digitsStep;
    }
}
