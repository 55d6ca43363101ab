// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LumenoScale.h"

#include "widgets/OneLine.h"
#include "widgets/ScaleMarks.h"

#include <QFontMetrics>
#include <QPainter>

namespace geometry = norvo::lumeno;

void LumenoScale::setSettings(const Settings& settings)
{
    m_settings = settings;
    m_height = kNotLaidOut;
}

void LumenoScale::setHeight(int height)
{
    if (height != m_height) {
        m_height = height;
        layOut();
    }
}

/// As a text in a box comes out by default: wrapped in it and cut off at its edges.
LumenoScale::Text LumenoScale::number(double value, double y) const
{
    const QFontMetrics metrics(m_settings.font);
    const QString digits =
        (value >= 0.0 ? " " : "") + QString::number(value, 'f', m_settings.precision);
    Text text;
    text.box = geometry::digitBox(y, geometry::scaledBarWidth(m_settings.barWidth),
                                  metrics.horizontalAdvance(digits), metrics.height());
    text.text.setTextFormat(Qt::PlainText);
    text.text.setText(digits);
    text.text.setTextWidth(text.box.width());
    text.text.prepare({}, m_settings.font);
    text.isClipped = !text.box.contains(QRectF(text.box.topLeft(), text.text.size()));
    return text;
}

void LumenoScale::layOut()
{
    const QFontMetrics metrics(m_settings.font);
    const double height = geometry::usedHeight(m_height, !m_settings.caption.isEmpty());
    const int barWidth = geometry::scaledBarWidth(m_settings.barWidth);
    m_axis = geometry::valueAxis(m_settings.scale, height, metrics.height());
    m_dashes = geometry::shortDashes(m_settings.scale, m_axis, barWidth);
    m_texts.clear();
    const QVector<geometry::Digit> digits = geometry::digits(m_settings.scale, m_axis);
    norvo::MarksPerPixel numbers(norvo::kMaxNumbersPerPixel);
    for (const geometry::Digit& digit : digits) {
        const QLine dash = geometry::longDash(digit.y, barWidth);
        m_dashes.append(dash);
        if (numbers.admit(dash.y1())) {
            m_texts.push_back(number(digit.value, digit.y));
        }
    }
    const QStringList lines = geometry::captionLines(m_settings.caption);
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = norvo::inOneLine(lines[i]);
        const QRectF box = geometry::captionBox(i, lines.size(), height,
                                                metrics.horizontalAdvance(line), metrics.height());
        m_texts.push_back({box, norvo::staticLine(line, m_settings.font), false});
    }
}

void LumenoScale::draw(QPainter& painter) const
{
    painter.setFont(m_settings.font);
    // One by one: together they would be filled as one shape where they are scaled.
    for (const QLine& dash : m_dashes) {
        painter.drawLine(dash);
    }
    for (const Text& text : m_texts) {
        if (text.isClipped) {
            painter.save();
            painter.setClipRect(text.box, Qt::IntersectClip);
        }
        painter.drawStaticText(text.box.topLeft(), text.text);
        if (text.isClipped) {
            painter.restore();
        }
    }
}
