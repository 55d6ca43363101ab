// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/plots/CopiedCurve.h"

#include <QImage>

namespace norvo {

/// One polygon of many points that jump takes Qt time with the square of them; the seams of several
/// would be seen through a colour that is not opaque. So they are drawn opaque, one over the edge
/// of the other, and then laid on the plot as a whole.
void CopiedCurve::drawFill(QCPPainter* painter, QVector<QPointF>* lines) const
{
    constexpr int pointsOfAPiece = 10;
    QColor colour = painter->brush().color();
    if (painter->brush().style() == Qt::NoBrush || lines->size() <= pointsOfAPiece) {
        QCPGraph::drawFill(painter, lines);
        return;
    }
    const QRect area = painter->clipBoundingRect().toAlignedRect();
    const double ratio = painter->deviceTransform().m11();
    QImage layer(area.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(ratio);
    layer.fill(Qt::transparent);
    const double opacity = colour.alphaF();
    colour.setAlpha(255);
    {
        QCPPainter pen(&layer);
        pen.translate(-area.topLeft());
        pen.setPen(Qt::NoPen);
        pen.setBrush(colour);
        for (int first = 0; first < lines->size(); first += pointsOfAPiece) {
            QVector<QPointF> piece = lines->mid(qMax(0, first - 1), pointsOfAPiece + 2);
            QCPGraph::drawFill(&pen, &piece);
        }
    }
    painter->save();
    painter->setAntialiasing(false); // Which also takes back its shift by half a pixel.
    painter->setOpacity(opacity);
    painter->drawImage(area.topLeft(), layer);
    painter->restore();
}

} // namespace norvo
