// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/LumenoGeometry.h"

#include <QFont>
#include <QStaticText>

#include <vector>

class QPainter;

/// What no value changes of the scaled bar gauge: dashes, numbers and caption.
///
/// Laid out once and then drawn at each paint: laying out a text costs ten times as much as drawing
/// it. A pixmap would cost as much to show, and letters lose their sub-pixel rendering in it.
class LumenoScale
{
public:
    struct Settings
    {
        norvo::lumeno::Scale scale;
        int precision = 0;
        int barWidth = 0; ///< Pixels.
        QString caption;
        QFont font;
    };

    void setSettings(const Settings& settings);
    /// Lays out for a widget of so many pixels; to be called before what follows.
    void setHeight(int height);

    /// Where values lie.
    const norvo::ValueAxis& axis() const { return m_axis; }
    /// Horizontally 0 is the widget's centre. In the painter's pen; changes its font.
    void draw(QPainter& painter) const;

private:
    struct Text
    {
        QRectF box;
        QStaticText text;
        bool isClipped; ///< To its box.
    };

    static constexpr int kNotLaidOut = -1;

    Text number(double value, double y) const;
    void layOut();

    Settings m_settings;
    int m_height = kNotLaidOut;
    norvo::ValueAxis m_axis;
    QVector<QLine> m_dashes; ///< Short ones first.
    std::vector<Text> m_texts;
};
