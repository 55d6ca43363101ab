// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/TouchKey.h"

#include <QPainter>
#include <QPainterPath>

namespace norvo {
namespace {

constexpr int kFontPixels = 24;

/// In a square from -1 to 1.
QPainterPath pathOf(TouchKey::Symbol symbol)
{
    QPainterPath path;
    switch (symbol) {
    case TouchKey::Symbol::None:
        break;
    case TouchKey::Symbol::Backspace:
        path.addPolygon(QPolygonF({{-1, 0}, {-0.4, -0.7}, {1, -0.7}, {1, 0.7}, {-0.4, 0.7}}));
        path.closeSubpath();
        path.moveTo(0, -0.3);
        path.lineTo(0.6, 0.3);
        path.moveTo(0, 0.3);
        path.lineTo(0.6, -0.3);
        break;
    case TouchKey::Symbol::Up:
        path.addPolygon(QPolygonF({{-0.9, 0.45}, {0, -0.45}, {0.9, 0.45}}));
        break;
    case TouchKey::Symbol::Down:
        path.addPolygon(QPolygonF({{-0.9, -0.45}, {0, 0.45}, {0.9, -0.45}}));
        break;
    case TouchKey::Symbol::Left:
        path.addPolygon(QPolygonF({{0.45, -0.9}, {-0.45, 0}, {0.45, 0.9}}));
        break;
    case TouchKey::Symbol::Right:
        path.addPolygon(QPolygonF({{-0.45, -0.9}, {0.45, 0}, {-0.45, 0.9}}));
        break;
    case TouchKey::Symbol::Caps:
        path.moveTo(-0.5, 1);
        path.lineTo(0.5, 1);
        Q_FALLTHROUGH();
    case TouchKey::Symbol::Shift:
        path.addPolygon(QPolygonF({{0, -1},
                                   {0.9, -0.1},
                                   {0.4, -0.1},
                                   {0.4, 0.6},
                                   {-0.4, 0.6},
                                   {-0.4, -0.1},
                                   {-0.9, -0.1}}));
        path.closeSubpath();
        break;
    }
    return path;
}

} // namespace

TouchKey::TouchKey(const QString& objectName, const QString& text)
{
    setObjectName(objectName);
    setPlainText(text);
    setAutoDefault(false);
    setFocusPolicy(Qt::NoFocus);
    setMinimumSize(kSize, kSize);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    QFont keyFont = font();
    keyFont.setPixelSize(kFontPixels);
    setFont(keyFont);
}

TouchKey::TouchKey(const QString& objectName, Symbol symbol, const QString& accessibleName)
    : TouchKey(objectName, QString())
{
    m_symbol = symbol;
    setAccessibleName(accessibleName);
}

void TouchKey::setPlainText(const QString& text)
{
    QString escaped = text;
    setText(escaped.replace('&', QLatin1String("&&")));
}

void TouchKey::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (m_symbol == Symbol::None) {
        return;
    }
    constexpr qreal halfSymbol = 13;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    painter.scale(halfSymbol, halfSymbol);
    QPen pen(palette().color(QPalette::ButtonText), 2.5);
    pen.setCosmetic(true);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.drawPath(pathOf(m_symbol));
}

} // namespace norvo
