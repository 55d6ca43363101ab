// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QRect>
#include <QStaticText>

#include <utility>
#include <vector>

class QPainter;

/// A horizontal scale: a red band with a green zone, short ticks, and long ticks with numbers.
///
/// The short ticks run over the whole region, two of them beyond the scale at either end; the long
/// ones run over the scale alone. Of ticks and numbers that share a pixel no more are drawn than
/// can be seen. Steps that are no positive number leave their ticks away; without steps for short
/// ticks the scale fills the region. A range of 0 has no green zone and a single number, at the
/// scale's start.
class ScaleDraw
{
public:
    ScaleDraw(double min, double max, double digitsStep, double dashesStep, double precision);

    void setRange(double min, double max, double digitsStep, double dashesStep, double precision);
    void setGreenZone(double low, double high);
    void setRegion(const QRect& region);
    /// Where the scale's two ends lie, in pixels.
    void getValuePxRange(double& start, double& end) const;
    void calcRanges();

    void draw(QPainter& painter) const;
    void drawZones(QPainter& painter) const;
    void drawDashes(QPainter& painter) const;
    void drawText(QPainter& painter) const;

    int dashCount() const { return m_dashCount; }     ///< 0: no short ticks.
    int digitCount() const { return m_digitCount; }   ///< 0: no long ticks.
    QRect greenZone() const;                          ///< Empty where there is none.
    QLine dash(int i) const;                          ///< The ith short tick.
    QLine digitDash(int j) const;                     ///< The jth long tick.
    QPoint textPosition(int j, int textWidth) const;  ///< Left end of the jth number's baseline.
    QRect numbersBox() const { return m_numbersBox; } ///< Around all of them; empty for none.

private:
    QLine tick(double x, double heightShare) const;
    double digitX(int j) const;
    void layOutNumbers();

    QRect m_region;
    double m_min = 0.0;
    double m_max = 0.0;
    double m_dashesStep = 0.0;
    double m_digitsStep = 0.0;
    double m_precision = 0.0;
    double m_greenLow = 0.0;
    double m_greenHigh = 0.0;
    QFont m_font;
    QFontMetrics m_metrics;
    int m_dashCount = 0;
    int m_digitCount = 0;
    double m_dashPixelStep = 0.0;
    double m_digitPixelStep = 0.0;
    double m_startX = 0.0;
    double m_pixelLength = 0.0;
    double m_range = 0.0;
    std::vector<std::pair<QPointF, QStaticText>> m_numbers; ///< With their top left corners.
    QRect m_numbersBox;
};
