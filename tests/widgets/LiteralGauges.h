// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBitmap>
#include <QFontMetrics>
#include <QPainter>
#include <QTextOption>

#include <cmath>
#include <cstdio>

/// The two gauges' pictures drawn by their rules step by step, every mark of them, however long
/// that takes: what the widgets' pictures are compared with.
namespace literal {

struct Scale
{
    double min = 0.0;
    double max = 1.0;
    double digitsStep = 0.5;
    double dashesStep = 0.1;
    int precision = 0;
};

inline int cut(double number)
{
    return int(number);
}

/// Panel and scale of a value bar with a green zone all over its range, without a pointer.
inline void drawValueBar(QPainter& painter, const QSize& size, const Scale& scale)
{
    const int w = size.width() - 10;
    const int h = size.height() - 10;
    QPixmap inside(size);
    inside.fill(Qt::black);
    QPainter maskPainter(&inside);
    maskPainter.setPen(Qt::NoPen);
    maskPainter.setBrush(Qt::white);
    maskPainter.drawRoundedRect(5, 5, w, h, 10, 10);
    maskPainter.end();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRegion(
        QRegion(inside.createMaskFromColor(QColor(Qt::white).rgb(), Qt::MaskOutColor)));
    painter.setBrush(QColor("#F5F5E6"));
    painter.setPen(QColor("#808080"));
    painter.drawRoundedRect(5, 5, w, h, 10, 10);

    const QRect region(5, cut((1.0 - 0.55) * h + 5), w, cut(0.55 * h));
    const double range = std::abs(scale.max - scale.min);
    const int dashes = int(std::ceil(range / scale.dashesStep + 2 * 2 + 1));
    const int digits = int(std::ceil(range / scale.digitsStep + 1));
    const double dashPixels = double(region.width()) / (dashes - 1);
    const double startX = region.left() + 2 * dashPixels;
    const double length = region.width() - 2 * 2 * dashPixels;
    const double digitPixels = length / (digits - 1);

    painter.setBrush(QColor("#FD454D"));
    painter.setPen(QColor("#C8C8C8"));
    painter.drawRect(region);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#049143"));
    painter.drawRect(cut(startX), region.top(), cut(length), region.height());

    const QPen tickPen(QColor("#F0F0F0"), 2);
    const double t = 0.07 * region.height();
    const auto drawTick = [&](int x, double share) {
        painter.drawLine(x, cut(region.top() + t), x,
                         cut(region.top() + region.height() * share + t));
    };
    painter.setPen(tickPen);
    for (int i = 0; i < dashes; ++i) {
        drawTick(cut(region.left() + i * dashPixels), 0.4);
    }
    for (int j = 0; j < digits; ++j) {
        drawTick(cut(startX + j * digitPixels), 0.6);
    }
    const QFont font("Arial", 14, QFont::Bold);
    const QFontMetrics metrics(font);
    painter.setFont(font);
    double value = scale.min;
    for (int j = 0; j < digits; ++j) {
        char text[64];
        std::snprintf(text, sizeof text, "%.*f", scale.precision, value);
        painter.drawText(cut(startX + j * digitPixels - metrics.horizontalAdvance(text) / 2.0),
                         cut(metrics.height() + region.top() + region.height() * 0.6), text);
        value += scale.digitsStep;
    }
}

/// Short dashes and numbers of a scaled bar gauge with a caption.
inline void drawLumenoScale(QPainter& painter, const QSize& size, const Scale& scale,
                            int fontSize = 15, int barWidth = 8)
{
    const int b = cut(barWidth * 1.5);
    QFont font("Roboto");
    font.setPixelSize(fontSize);
    const QFontMetrics metrics(font);
    const double margin = 2.25 * metrics.height();
    const double span = size.height() - 2.0 * margin;
    const auto y = [&](double value) {
        return (size.height() - margin) - (value - scale.min) / (scale.max - scale.min) * span;
    };
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(size.width() * 0.5, 0.0);
    painter.setFont(font);
    for (double d = scale.min; d <= scale.max; d += scale.dashesStep) {
        const double r = (d - scale.min) / scale.digitsStep;
        if (std::abs(qRound(r) - r) > 0.01) {
            painter.drawLine(cut(-0.45 * b), cut(y(d)), cut(0.3 * b), cut(y(d)));
        }
    }
    for (double v = scale.min; v <= scale.max; v += scale.digitsStep) {
        const QString text = (v >= 0.0 ? " " : "") + QString::number(v, 'f', scale.precision);
        const QRectF box(3.0 + 0.5 * b, y(v) - 1.0 - 0.5 * metrics.height(),
                         metrics.horizontalAdvance(text), metrics.height());
        painter.drawText(box, text, QTextOption());
        painter.drawLine(cut(-0.45 * b), cut(y(v)), cut(0.5 * b), cut(y(v)));
    }
    painter.translate(-size.width() * 0.5, 0.0);
}

} // namespace literal
