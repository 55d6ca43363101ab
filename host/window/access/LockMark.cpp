// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/LockMark.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kVeil = 110; // Of 255.
constexpr int kDisc = 30;  // Pixels, across.
constexpr int kInset = 3;  // Pixels, from the corner.

} // namespace

LockMark::LockMark(QWidget& control) : Overlay(control)
{
    setObjectName("lockMark");
    setAccessibleName(tr("locked"));
    connect(&control, &QObject::destroyed, this, &QObject::deleteLater);
    follow();
}

void LockMark::setLocked(bool isLocked)
{
    m_isLocked = isLocked;
    follow();
}

void LockMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor veil = palette().color(QPalette::Window);
    veil.setAlpha(kVeil);
    painter.fillRect(rect(), veil);
    const int side = std::min({kDisc, width() - kInset, height() - kInset});
    QRectF disc(0, 0, side, side);
    disc.moveTopRight(QPointF(width() - kInset, kInset));
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    painter.setBrush(palette().window());
    painter.drawEllipse(disc);
    const qreal inner = side * 0.22;
    paintLock(painter, disc.adjusted(inner, inner, -inner, -inner),
              palette().color(QPalette::WindowText), true);
}

void LockMark::paintLock(QPainter& painter, const QRectF& square, const QColor& colour,
                         bool isClosed)
{
    const qreal unit = square.width() / 10;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(unit, unit);
    QPainterPath bow;
    bow.moveTo(2.5, 5);
    bow.lineTo(2.5, 3.2);
    bow.arcTo(QRectF(2.5, 0.7, 5, 5), 180, -180);
    if (isClosed) {
        bow.lineTo(7.5, 5);
    }
    painter.setPen(QPen(colour, 1.4, Qt::SolidLine, Qt::FlatCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(bow);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(1, 4.8, 8, 5.2), 0.8, 0.8);
    painter.restore();
}

} // namespace norvo
