// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/TouchKey.h"

#include <QPolygonF>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QVector>

namespace norvo {
namespace {

constexpr int kFontPixels = 24;

using Line = QVector<QPointF>;

/// Its lines, in a square from -1 to 1.
QVector<Line> linesOf(TouchKey::Symbol symbol)
{
    const Line arrow{{0, -1},     {0.9, -0.1},  {0.4, -0.1},  {0.4, 0.6},
                     {-0.4, 0.6}, {-0.4, -0.1}, {-0.9, -0.1}, {0, -1}};
    switch (symbol) {
    case TouchKey::Symbol::None:
        break;
    case TouchKey::Symbol::Backspace:
        return {Line{{-1, 0}, {-0.4, -0.7}, {1, -0.7}, {1, 0.7}, {-0.4, 0.7}, {-1, 0}},
                Line{{0, -0.3}, {0.6, 0.3}}, Line{{0, 0.3}, {0.6, -0.3}}};
    case TouchKey::Symbol::Up:
        return {Line{{-0.9, 0.45}, {0, -0.45}, {0.9, 0.45}}};
    case TouchKey::Symbol::Down:
        return {Line{{-0.9, -0.45}, {0, 0.45}, {0.9, -0.45}}};
    case TouchKey::Symbol::Left:
        return {Line{{0.45, -0.9}, {-0.45, 0}, {0.45, 0.9}}};
    case TouchKey::Symbol::Right:
        return {Line{{-0.45, -0.9}, {0.45, 0}, {-0.45, 0.9}}};
    case TouchKey::Symbol::Caps:
        return {Line{{-0.5, 1}, {0.5, 1}}, arrow};
    case TouchKey::Symbol::Shift:
        return {arrow};
    }
    return {};
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
    setAutoRepeat(symbol != Symbol::Shift && symbol != Symbol::Caps);
    setAccessibleName(accessibleName);
}

void TouchKey::setPlainText(const QString& text)
{
    QString escaped = text;
    setText(escaped.replace('&', QLatin1String("&&")));
}

int TouchKey::touchSize() const
{
    QStyleOptionButton option;
    option.initFrom(this);
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, QSize(), this).height();
}

int TouchKey::wantedSize() const
{
    return qMax(kSize, touchSize());
}

void TouchKey::paintEvent(QPaintEvent*)
{
    constexpr qreal halfSymbol = 13;
    QStyleOptionButton option;
    initStyleOption(&option);
    if (isDefault()) { // a press empties it
        option.state.setFlag(QStyle::State_On, !isDown());
        option.state.setFlag(QStyle::State_Sunken, false);
    }
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    painter.scale(halfSymbol, halfSymbol);
    QPen pen(palette().color(QPalette::ButtonText), 2.5);
    pen.setCosmetic(true);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    for (const Line& line : linesOf(m_symbol)) {
        painter.drawPolyline(line);
    }
}

} // namespace norvo
