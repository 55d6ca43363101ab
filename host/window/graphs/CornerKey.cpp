// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/graphs/CornerKey.h"

#include "host/window/graphs/ToolKey.h"

#include <QPainter>

namespace norvo {

namespace {

constexpr double kPlate = 0.5;   // of the key
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

void CornerKey::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double edge = hasFocus() ? kFocusEdge : kEdge;
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), edge));
    if (m_isBare) {
        if (hasFocus()) {
            painter.drawRect(QRectF(rect()).adjusted(edge, edge, -edge, -edge));
        }
        return;
    }
    const double side = m_size * kPlate;
    const QRectF plate(edge, height() - side - edge, side, side);
    painter.setBrush(palette().color(isDown() ? QPalette::Highlight : QPalette::Button));
    painter.drawRoundedRect(plate, 4, 4);
    painter.setPen(palette().color(isDown() ? QPalette::HighlightedText : QPalette::ButtonText));
    const double margin = side * (1 - kSymbol) / 2;
    ToolKey::paint(painter, plate.adjusted(margin, margin, -margin, -margin),
                   ToolKey::Symbol::Tools);
}

} // namespace norvo
