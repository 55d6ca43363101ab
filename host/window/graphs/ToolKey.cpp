// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/graphs/ToolKey.h"

#include <QPainter>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kTextPixels = 12;
constexpr int kPadding = 6;
constexpr int kMaxSymbol = 28; // pixels

void paintLines(QPainter& painter, const QVector<QPointF>& line)
{
    painter.drawPolyline(line.constData(), line.size());
}

/// A square of ten by ten.
void paintStrokes(QPainter& painter, ToolKey::Symbol symbol)
{
    using Symbol = ToolKey::Symbol;
    switch (symbol) {
    case Symbol::Tools: // A curve under a lens.
        painter.drawEllipse(QRectF(0.8, 0.8, 6.8, 6.8));
        painter.drawLine(QPointF(6.6, 6.6), QPointF(9.4, 9.4));
        paintLines(painter, {{2, 4.8}, {3.4, 3.2}, {4.8, 5}, {6.4, 3}});
        break;
    case Symbol::Pause:
        painter.fillRect(QRectF(2, 1, 2.2, 8), painter.pen().color());
        painter.fillRect(QRectF(5.8, 1, 2.2, 8), painter.pen().color());
        break;
    case Symbol::Live: { // On to the newest.
        const QPointF triangle[] = {{1.5, 1}, {7, 5}, {1.5, 9}};
        painter.setBrush(painter.pen().color());
        painter.drawPolygon(triangle, 3);
        painter.drawLine(QPointF(8.8, 1), QPointF(8.8, 9));
        break;
    }
    case Symbol::Range: // Between two bounds.
        painter.drawLine(QPointF(1, 0.8), QPointF(9, 0.8));
        painter.drawLine(QPointF(1, 9.2), QPointF(9, 9.2));
        painter.drawLine(QPointF(5, 2.4), QPointF(5, 7.6));
        paintLines(painter, {{3.4, 4}, {5, 2.4}, {6.6, 4}});
        paintLines(painter, {{3.4, 6}, {5, 7.6}, {6.6, 6}});
        break;
    case Symbol::Table:
        painter.drawRect(QRectF(0.8, 1.4, 8.4, 7.2));
        painter.drawLine(QPointF(0.8, 3.8), QPointF(9.2, 3.8));
        painter.drawLine(QPointF(0.8, 6.2), QPointF(9.2, 6.2));
        painter.drawLine(QPointF(4, 1.4), QPointF(4, 8.6));
        break;
    case Symbol::Picture:
        painter.drawRect(QRectF(0.8, 1.4, 8.4, 7.2));
        paintLines(painter, {{1.6, 7.6}, {4, 4.4}, {5.6, 6.4}, {7, 4.8}, {8.6, 7}});
        painter.drawEllipse(QRectF(6.2, 2.6, 1.2, 1.2));
        break;
    case Symbol::Close:
        painter.drawLine(QPointF(1.6, 1.6), QPointF(8.4, 8.4));
        painter.drawLine(QPointF(8.4, 1.6), QPointF(1.6, 8.4));
        break;
    }
}

} // namespace

ToolKey::ToolKey(Symbol symbol, const QString& text, int size, QWidget* parent)
    : QAbstractButton(parent), m_symbol(symbol), m_size(size)
{
    setFocusPolicy(Qt::StrongFocus);
    QFont small = font();
    small.setPixelSize(kTextPixels);
    setFont(small);
    show(symbol, text);
}

void ToolKey::show(Symbol symbol, const QString& text)
{
    m_symbol = symbol;
    setText(text);
    setAccessibleName(text);
    update();
}

QSize ToolKey::sizeHint() const
{
    return {std::max(m_size, fontMetrics().horizontalAdvance(text()) + 2 * kPadding), m_size};
}

void ToolKey::paint(QPainter& painter, const QRectF& square, Symbol symbol)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / 10, square.height() / 10);
    painter.setPen(QPen(painter.pen().color(), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    paintStrokes(painter, symbol);
    painter.restore();
}

void ToolKey::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isOn = isDown() || isChecked();
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 3)
                              : QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(palette().color(isOn ? QPalette::Highlight : QPalette::Button));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
    painter.setPen(palette().color(isOn ? QPalette::HighlightedText : QPalette::ButtonText));
    const int textHeight = fontMetrics().height();
    const int symbol = std::min(kMaxSymbol, height() - textHeight - 3 * kPadding);
    const int top = (height() - symbol - textHeight - kPadding / 2) / 2;
    paint(painter, QRectF((width() - symbol) / 2., top, symbol, symbol), m_symbol);
    painter.drawText(QRect(0, top + symbol + kPadding / 2, width(), textHeight), Qt::AlignCenter,
                     text());
}

} // namespace norvo
