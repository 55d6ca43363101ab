// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/LegendEntry.h"

namespace norvo::plot {

LegendEntry::LegendEntry(QCPLegend* legend, DenseGraph* curve)
    : QCPPlottableLegendItem(legend, curve), m_curve(*curve)
{
    m_text.laidOut.setTextFormat(Qt::PlainText);
}

/// Its own place would cut the letters: the library moves each clip up by a pixel when it draws.
QRect LegendEntry::clipRect() const
{
    return mParentLegend->outerRect();
}

const LegendEntry::Text& LegendEntry::text() const
{
    const QString name = m_curve.name();
    const QFont font = getFont();
    if (m_text.size.isEmpty() || m_text.name != name || m_text.font != font) {
        m_text.name = name;
        m_text.font = font;
        m_text.size = QFontMetrics(font).boundingRect({}, Qt::TextDontClip, name).size();
        m_text.laidOut.setText(name);
        m_text.laidOut.prepare({}, font);
    }
    return m_text;
}

QSize LegendEntry::minimumOuterSizeHint() const
{
    const QSize icon = mParentLegend->iconSize();
    const QSize size = text().size;
    return QSize(icon.width() + mParentLegend->iconTextPadding() + size.width(),
                 qMax(icon.height(), size.height()))
        .grownBy(mMargins);
}

void LegendEntry::draw(QCPPainter* painter)
{
    const QRect icon(mRect.topLeft(), mParentLegend->iconSize());
    painter->setFont(getFont());
    painter->setPen(getTextColor());
    painter->drawStaticText(icon.x() + icon.width() + mParentLegend->iconTextPadding(), icon.y(),
                            text().laidOut);
    painter->save();
    painter->setClipRect(icon, Qt::IntersectClip);
    m_curve.drawIcon(*painter, icon);
    painter->restore();
    if (getIconBorderPen().style() != Qt::NoPen) {
        painter->setPen(getIconBorderPen());
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(icon);
    }
}

} // namespace norvo::plot
