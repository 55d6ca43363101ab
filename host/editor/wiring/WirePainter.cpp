// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WirePainter.h"

#include "host/editor/wiring/WireScene.h"

#include <QPainter>
#include <QPalette>

namespace norvo {

namespace {

constexpr double kThin = 1.4; // pixels
constexpr double kStrong = 2.6;
constexpr double kHalo = 3.0; // around a line, in the colour of the ground
constexpr double kDot = 3.5;  // where a line begins
constexpr double kArrow = 8.0;
constexpr int kFrame = 3;
constexpr int kRadius = 4;
constexpr double kVeil = 0.65;
constexpr double kName = 0.85;
constexpr double kSmall = 0.8; // of a text's size

QColor colourOf(WirePainter::Weight weight, const QPalette& palette)
{
    return weight <= WirePainter::Weight::Thin
               ? palette.color(QPalette::Disabled, QPalette::WindowText)
               : palette.color(QPalette::Link);
}

QColor faded(QColor colour, double alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

/// The arrow at the end of a line shows which way its values go.
void paintEnds(QPainter& painter, const WireLine& line, const QColor& colour)
{
    const bool isFromAway = line.away == line.from;
    const QPointF begin = isFromAway ? line.points.last() : line.points.first();
    const QPointF end = isFromAway ? line.points.first() : line.points.last();
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    if (line.away.isEmpty() || !isFromAway) {
        painter.drawEllipse(begin, kDot, kDot);
    }
    if (line.away.isEmpty() || isFromAway) {
        const QPointF before =
            isFromAway ? line.points.last() : line.points[line.points.size() - 3];
        QLineF back(end, before);
        back.setLength(kArrow);
        const QPointF along = back.p2() - back.p1();
        const QPointF across(along.y() / 2, -along.x() / 2);
        painter.drawPolygon(QPolygonF({end, end + along + across, end + along - across}));
    }
}

void paintBox(QPainter& painter, const QRectF& area, const QString& text, const QColor& ground,
              const QColor& edge, const QColor& ink)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    painter.setPen(ink);
    painter.drawText(area, Qt::AlignCenter, text);
}

} // namespace

void WirePainter::paintLine(QPainter& painter, const WireLine& line, Weight weight,
                            const QPalette& palette)
{
    const QColor colour = colourOf(weight, palette);
    if (weight == Weight::Faint) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(colour);
        painter.drawPolyline(line.points.constData(), line.points.size());
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    const double width = weight == Weight::Thin ? kThin : kStrong;
    const bool isSelected = weight == Weight::Selected;
    painter.setPen(
        QPen(faded(palette.color(QPalette::Base), 0.8), width + (isSelected ? 2 * kHalo : kHalo)));
    painter.drawPath(line.path);
    painter.setPen(QPen(colour, isSelected ? width + 1.5 : width));
    painter.drawPath(line.path);
    paintEnds(painter, line, colour);
}

void WirePainter::paintTag(QPainter& painter, const WireLine& line, Weight weight,
                           const QPalette& palette)
{
    const bool isSelected = weight == Weight::Selected;
    paintBox(painter, line.tagRect, line.tag,
             palette.color(isSelected ? QPalette::Highlight : QPalette::Base),
             colourOf(weight, palette),
             palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
}

void WirePainter::paintValue(QPainter& painter, const QRectF& area, const QString& value,
                             Weight weight, const QPalette& palette)
{
    const bool isSelected = weight == Weight::Selected;
    paintBox(painter, area, value, palette.color(isSelected ? QPalette::Highlight : QPalette::Base),
             colourOf(weight, palette),
             palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
}

void WirePainter::paintDevice(QPainter& painter, const QRect& device, const QString& id,
                              const QPalette& palette)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(palette.color(QPalette::Disabled, QPalette::WindowText));
    painter.drawRect(device.adjusted(0, 0, -1, -1));
    const QFont font = painter.font();
    QFont small = font;
    small.setPointSizeF(font.pointSizeF() * kSmall);
    painter.setFont(small);
    const QFontMetricsF metrics(small);
    const QString text = metrics.elidedText(id, Qt::ElideRight, device.width() - 2 * kRadius);
    const QRectF area(device.topLeft(),
                      QSizeF(metrics.horizontalAdvance(text) + 2 * kRadius, metrics.height()));
    painter.fillRect(area, faded(palette.color(QPalette::Base), kName));
    painter.setPen(palette.color(QPalette::Text));
    painter.drawText(area, Qt::AlignCenter, text);
    painter.setFont(font);
}

void WirePainter::paintFrame(QPainter& painter, const QRect& device, const QPalette& palette)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    const QRect frame = device.adjusted(kFrame, kFrame, -kFrame, -kFrame);
    painter.setPen(QPen(palette.color(QPalette::Base), kFrame + 2, Qt::SolidLine, Qt::SquareCap,
                        Qt::MiterJoin));
    painter.drawRect(frame);
    painter.setPen(
        QPen(palette.color(QPalette::Link), kFrame, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(frame);
}

void WirePainter::paintFit(QPainter& painter, const QRect& device, const QString& port,
                           const QPalette& palette)
{
    paintFrame(painter, device, palette);
    const QFontMetricsF metrics(painter.font());
    const QString text =
        metrics.elidedText(port, Qt::ElideMiddle, std::max(40.0, device.width() - 16.0));
    QRectF area(0, 0, metrics.horizontalAdvance(text) + 12, metrics.height() + 6);
    area.moveCenter(QRectF(device).center());
    paintBox(painter, area, text, palette.color(QPalette::Link), palette.color(QPalette::Base),
             palette.color(QPalette::Base));
}

void WirePainter::paintVeil(QPainter& painter, const QRect& device, const QPalette& palette)
{
    painter.fillRect(device, faded(palette.color(QPalette::Window), kVeil));
}

} // namespace norvo
