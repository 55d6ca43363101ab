// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/graphs/CornerKey.h"

#include "host/window/graphs/ToolKey.h"

#include <QPainter>
#include <QtMath>

namespace norvo {

namespace {

constexpr double kPlate = 0.54;  // of the key
constexpr double kSymbol = 0.7;  // of the plate
constexpr double kEdge = 1;      // pixels
constexpr double kFocusEdge = 3; // likewise, with the focus

} // namespace

CornerKey::CornerKey(QWidget* parent, int size) : QAbstractButton(parent), m_size(size)
{
    setFocusPolicy(Qt::TabFocus);
}

void CornerKey::setBare(bool isBare)
{
    m_isBare = isBare;
    update();
}

void CornerKey::changeEvent(QEvent* event)
{
    m_plate = QPixmap();
    QAbstractButton::changeEvent(event);
}

void CornerKey::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_isBare) {
        if (hasFocus()) {
            painter.setPen(QPen(palette().color(QPalette::Highlight), kFocusEdge));
            painter.drawRect(
                QRectF(rect()).adjusted(kFocusEdge, kFocusEdge, -kFocusEdge, -kFocusEdge));
        }
        return;
    }
    const double ratio = painter.deviceTransform().m11();
    const int state = (hasFocus() ? 1 : 0) + (isDown() ? 2 : 0);
    if (m_plate.isNull() || m_painted != state || m_plate.devicePixelRatioF() != ratio) {
        m_painted = state;
        m_plate = QPixmap(QSizeF(side(), side()).toSize() * ratio);
        m_plate.setDevicePixelRatio(ratio);
        m_plate.fill(Qt::transparent);
        QPainter plate(&m_plate);
        paintPlate(plate);
    }
    painter.drawPixmap(QPointF(0, height() - side()), m_plate);
}

int CornerKey::side() const
{
    return qCeil(m_size * kPlate);
}

void CornerKey::paintPlate(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    const double edge = hasFocus() ? kFocusEdge : kEdge;
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), edge));
    const QRectF plate = QRectF(0, 0, side(), side()).adjusted(edge, edge, -edge, -edge);
    painter.setBrush(palette().color(isDown() ? QPalette::Highlight : QPalette::Button));
    painter.drawRoundedRect(plate, 4, 4);
    painter.setPen(palette().color(isDown() ? QPalette::HighlightedText : QPalette::ButtonText));
    const double margin = plate.width() * (1 - kSymbol) / 2;
    ToolKey::paint(painter, plate.adjusted(margin, margin, -margin, -margin),
                   ToolKey::Symbol::Tools);
}

} // namespace norvo
